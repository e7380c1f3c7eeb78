#pragma once
// The framework's string list: ordered texts that hosts read whole as lines or as
// comma-separated text.
#include <QStringList>

namespace kivdb {

class StringList {
public:
    StringList() = default;
    explicit StringList(QStringList items) : items_(std::move(items)) {}

    int count() const { return int(items_.size()); }
    const QString& operator[](int index) const;    // throws std::out_of_range
    int add(const QString& text);                  // answers the new item's index
    void insert(int index, const QString& text);   // 0..count; throws std::out_of_range
    void remove(int index);                        // throws std::out_of_range
    void clear() { items_.clear(); }
    int indexOf(const QString& text) const;        // compared without regard to case; -1 when absent
    const QStringList& items() const { return items_; }

    // The items each followed by a line break ("\r\n"); setting splits at "\r\n", "\n" or "\r".
    QString text() const;
    void setText(const QString& text);
    // The items separated by commas; an item holding a blank, comma or quote is quoted with
    // '"', its quotes doubled. Setting reads the same form, blanks also separating.
    QString commaText() const;
    void setCommaText(const QString& text);

private:
    void checkIndex(int index, int limit) const;
    QStringList items_;
};

}  // namespace kivdb
