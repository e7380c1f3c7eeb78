// Arbitrary bytes as T-SQL: tokenizing, parsing and printing for both engines must end in
// text or SqlError, never in a crash, a hang or a leak.
#include "dialect/dialect.h"

#include <cstddef>
#include <cstdint>

namespace {

// A catalog with a couple of tables, so name resolution and typing run too.
class FuzzCatalog : public kivdb::dialect::Catalog {
public:
    std::optional<std::vector<kivdb::dialect::CatalogColumn>> tableColumns(const QString& table) const override {
        using kivdb::dialect::ColumnKind;
        if (table.compare(QLatin1String("a"), Qt::CaseInsensitive) == 0)
            return std::vector<kivdb::dialect::CatalogColumn>{{"x", ColumnKind::Text}, {"y", ColumnKind::Integer},
                                                              {"d", ColumnKind::DateTime}};
        if (table.compare(QLatin1String("b"), Qt::CaseInsensitive) == 0)
            return std::vector<kivdb::dialect::CatalogColumn>{{"x", ColumnKind::Text}, {"m", ColumnKind::Money}};
        return std::nullopt;
    }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    const FuzzCatalog catalog;
    try {
        kivdb::dialect::translateToSqlite(text, catalog);
    } catch (const kivdb::dialect::SqlError&) {
    }
    try {
        kivdb::dialect::rewriteOuterJoins(text, catalog);
    } catch (const kivdb::dialect::SqlError&) {
    }
    kivdb::dialect::hasOldOuterJoin(text);
    kivdb::dialect::splitBatches(text);
    return 0;
}
