#include "platform/string_list.h"

#include <QRegularExpression>
#include <stdexcept>

namespace kivdb {

void StringList::checkIndex(int index, int limit) const {
    if (index < 0 || index > limit) throw std::out_of_range(QStringLiteral("List index out of bounds (%1)").arg(index).toStdString());
}

const QString& StringList::operator[](int index) const {
    checkIndex(index, count() - 1);
    return items_[index];
}

int StringList::add(const QString& text) {
    items_ << text;
    return count() - 1;
}

void StringList::insert(int index, const QString& text) {
    checkIndex(index, count());
    items_.insert(index, text);
}

void StringList::remove(int index) {
    checkIndex(index, count() - 1);
    items_.removeAt(index);
}

int StringList::indexOf(const QString& text) const {
    for (int i = 0; i < count(); ++i)
        if (items_[i].compare(text, Qt::CaseInsensitive) == 0) return i;
    return -1;
}

QString StringList::text() const {
    QString all;
    for (const QString& item : items_) all += item + QStringLiteral("\r\n");
    return all;
}

void StringList::setText(const QString& text) {
    static const QRegularExpression lineBreak(QStringLiteral("\r\n|\n|\r"));
    items_ = text.split(lineBreak);
    // A final line break ends the last line; it starts no empty one.
    if (!items_.isEmpty() && items_.last().isEmpty()) items_.removeLast();
}

QString StringList::commaText() const {
    QStringList parts;
    for (const QString& item : items_) {
        const bool quote = item.isEmpty() ? false : item.contains(QRegularExpression(QStringLiteral("[\\s,\"]")));
        parts << (quote ? u'"' + QString(item).replace(u'"', QStringLiteral("\"\"")) + u'"' : item);
    }
    return parts.join(u',');
}

void StringList::setCommaText(const QString& text) {
    items_.clear();
    qsizetype i = 0;
    const qsizetype n = text.size();
    auto skipBlanks = [&] { while (i < n && text[i].isSpace()) ++i; };
    skipBlanks();
    while (i < n) {
        QString item;
        if (text[i] == u'"') {
            for (++i; i < n; ++i) {
                if (text[i] == u'"') {
                    if (i + 1 < n && text[i + 1] == u'"') ++i;
                    else { ++i; break; }
                }
                item += text[i];
            }
        } else {
            while (i < n && text[i] != u',' && !text[i].isSpace()) item += text[i++];
        }
        items_ << item;
        skipBlanks();
        if (i < n && text[i] == u',') {
            ++i;
            skipBlanks();
            if (i == n) items_ << QString();
        }
    }
}

}  // namespace kivdb
