#include "cli/call_table.h"

#include "platform/kivfunc.h"
#include "platform/oledate.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonValue>

#include <algorithm>
#include <utility>

namespace kivdb::cli {

namespace {

[[noreturn]] void badArgument(const Param& p, const QString& text, const char* expected) {
    throw ValueError(QStringLiteral("argument %1: '%2' is not %3").arg(QLatin1String(p.name), text,
                                                                       QLatin1String(expected)));
}

QVariant fromJson(const QJsonValue& v) {
    switch (v.type()) {
    case QJsonValue::Bool: return v.toBool();
    case QJsonValue::Double: {
        const double d = v.toDouble();
        if (d == double(qlonglong(d)) && qAbs(d) < 9e15) return qlonglong(d);
        return d;
    }
    case QJsonValue::String: return v.toString();
    case QJsonValue::Array: {
        QVariantList list;
        for (const QJsonValue& item : v.toArray()) list.append(fromJson(item));
        return list;
    }
    default: return {};
    }
}

QVariant readArgument(const Param& p, const QString& text) {
    bool ok = false;
    switch (p.type) {
    case ArgType::String: return text;
    case ArgType::Int: {
        const int i = text.toInt(&ok);
        if (!ok) badArgument(p, text, "an integer");
        return i;
    }
    case ArgType::Float: {
        const double d = text.toDouble(&ok);
        if (!ok) badArgument(p, text, "a number");
        return d;
    }
    case ArgType::Bool:
        if (text == QLatin1String("true")) return true;
        if (text == QLatin1String("false")) return false;
        badArgument(p, text, "true or false");
    case ArgType::Date: {
        if (text == QLatin1String("0")) return 0.0;
        try {
            if (!text.trimmed().isEmpty()) return kivfunc::GetDateFromString(text);
        } catch (const DateConversionError&) {
        }
        badArgument(p, text, "a date (yyyy-mm-dd)");
    }
    case ArgType::Variant: {
        // JSON when it reads as JSON (null, numbers, true/false, "text"), else the text itself.
        const QJsonDocument doc = QJsonDocument::fromJson(("[" + text + "]").toUtf8());
        if (doc.isArray() && doc.array().size() == 1) return fromJson(doc.array().at(0));
        return text;
    }
    case ArgType::VariantArray: {
        const QJsonDocument doc = QJsonDocument::fromJson(text.toUtf8());
        if (!doc.isArray()) badArgument(p, text, "a JSON array");
        return fromJson(doc.array());
    }
    }
    return {};
}

}  // namespace

CallArgs::CallArgs(const std::vector<Param>& params, const QStringList& raw) {
    if (size_t(raw.size()) != params.size()) {
        QStringList names;
        for (const Param& p : params) names << QLatin1String(p.name);
        throw ValueError(QStringLiteral("expected %1 argument(s): %2, got %3")
                             .arg(params.size()).arg(names.join(QLatin1String(", "))).arg(raw.size()),
                         ErrorKind::Argument);
    }
    for (size_t i = 0; i < params.size(); ++i) values_.append(readArgument(params[i], raw[qsizetype(i)]));
}

CallResult CallResult::ofFloat(double v) {
    // The shortest text that reads back to the same double: 12.5, 0.1, 3.
    return CallResult(QString::number(v, 'g', QLocale::FloatingPointShortest));
}

CallResult CallResult::ofDate(OleDate v) {
    if (v == 0) return CallResult(QStringLiteral("0"));
    return CallResult(fieldText(fromOleDate(v)));
}

CallResult CallResult::ofVariant(const Value& v) {
    if (!v.isValid() || v.isNull()) return CallResult(QStringLiteral("null"));
    switch (v.typeId()) {
    case QMetaType::Bool: return ofBool(v.toBool());
    case QMetaType::Double: return ofFloat(v.toDouble());
    case QMetaType::QDateTime: return CallResult(fieldText(v));
    default: return CallResult(v.toString());
    }
}

const CallableExport* findExport(const QString& name) {
    for (const CallableExport& e : callableExports())
        if (name.compare(QLatin1String(e.name), Qt::CaseInsensitive) == 0) return &e;
    return nullptr;
}

namespace {

// The edits (insertions, deletions, replacements) that turn one text into the other.
int editDistance(const QString& a, const QString& b) {
    std::vector<int> row(b.size() + 1);
    for (int j = 0; j <= b.size(); ++j) row[j] = j;
    for (int i = 1; i <= a.size(); ++i) {
        int diagonal = row[0];
        row[0] = i;
        for (int j = 1; j <= b.size(); ++j) {
            const int above = row[j];
            row[j] = std::min({above + 1, row[j - 1] + 1, diagonal + (a[i - 1] == b[j - 1] ? 0 : 1)});
            diagonal = above;
        }
    }
    return row[b.size()];
}

}  // namespace

QStringList nearestExports(const QString& name) {
    const QString wanted = name.toLower();
    for (const ExportDeclaration& d : exportDeclarations())
        if (wanted == QString::fromLatin1(d.name).toLower()) return {};
    const int near = std::max<int>(2, wanted.size() / 3);
    std::vector<std::pair<int, QString>> found;
    for (const CallableExport& e : callableExports()) {
        const QString candidate = QString::fromLatin1(e.name);
        const int distance = editDistance(wanted, candidate.toLower());
        if (distance <= near || (wanted.size() >= 4 && candidate.contains(wanted, Qt::CaseInsensitive)))
            found.emplace_back(distance, candidate);
    }
    std::sort(found.begin(), found.end());
    QStringList names;
    for (std::size_t i = 0; i < found.size() && i < 3; ++i) names << found[i].second;
    return names;
}

}  // namespace kivdb::cli
