#include "integrity/schema_loader.h"

#include "platform/sqlite_connection.h"
#include "testing/sqlite_database.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace kivdb::integrity {
namespace {

using dialect::ColumnKind;

// An embedded database, seen through the connection and, for reading the schema back, raw.
struct EmbeddedConnection {
    SqliteConnection conn{QStringLiteral(":memory:"), SqliteConnection::OpenMode::CreateIfMissing};
};
struct Db : EmbeddedConnection, testing::SqliteTestDb {
    Db() : SqliteTestDb(conn.handle()) {}
};

// Rows of a query, each as its cells' text; a query that fails is reported and answers none.
std::vector<QStringList> rows(Db& db, const QString& sql) {
    std::vector<QStringList> result;
    try {
        for (const QString& row : db.runSqlite(sql)) result.push_back(row.split(QLatin1Char('|')));
    } catch (const std::exception& e) {
        ADD_FAILURE() << sql.toStdString() << ": " << e.what();
    }
    return result;
}

QString lower(const QString& s) { return s.toLower(); }

// Primary-key columns of a table in key order, lower-cased.
QStringList primaryKey(Db& db, const QString& table) {
    QMap<int, QString> byPosition;
    for (const QStringList& r :
         rows(db, QStringLiteral("select name, pk from pragma_table_info('%1')").arg(table)))
        if (r[1].toInt() > 0) byPosition.insert(r[1].toInt(), lower(r[0]));
    return byPosition.values();
}

// First columns of every index of a table (primary key included), lower-cased.
QSet<QString> leadingIndexedColumns(Db& db, const QString& table) {
    QSet<QString> leading;
    const QStringList key = primaryKey(db, table);
    if (!key.isEmpty()) leading.insert(key.first());
    for (const QStringList& index :
         rows(db, QStringLiteral("select name from pragma_index_list('%1')").arg(table))) {
        const auto info = rows(
            db, QStringLiteral("select name from pragma_index_info('%1') where seqno = 0").arg(index[0]));
        if (!info.empty()) leading.insert(lower(info.front()[0]));
    }
    return leading;
}

QString schemaDir() { return defaultSchemaDirectory(); }

std::vector<InventoryColumn> inventory() {
    return readInventory(schemaDir() + QStringLiteral("/inventory.tsv"));
}

// ------------------------------------------------------------------ script handling

// A schema directory of the test's own, removed afterwards.
class ScriptDir {
public:
    ScriptDir() { QDir(dir_.path()).mkpath(QStringLiteral("mssql")); }
    QString path() const { return dir_.path(); }
    void write(const char* name, const char* text) {
        QFile file(dir_.path() + QStringLiteral("/mssql/") + QLatin1String(name));
        if (!file.open(QIODevice::WriteOnly)) ADD_FAILURE() << "cannot write " << name;
        file.write(text);
    }

private:
    QTemporaryDir dir_;
};

TEST(SchemaScripts, OnlyNumberedScriptsAreAppliedInNameOrder) {
    ScriptDir dir;
    // 02 refers to what 01 creates, and procedures.sql is not SQL the embedded engine runs.
    dir.write("02_second.sql", "create index IX_first_a on first (a)\ngo\n");
    dir.write("01_first.sql", "create table first (a int not null)\ngo\n");
    dir.write("procedures.sql", "create procedure p as select 1\ngo\n");

    EXPECT_EQ(tableScripts(dir.path()).size(), 2);
    Db db;
    ASSERT_NO_THROW(applySchema(db.conn, dir.path()));
    EXPECT_EQ(rows(db, "select name from sqlite_master where name = 'IX_first_a'").size(), 1u);
}

TEST(SchemaScripts, AFailingBatchLeavesNothingBehind) {
    ScriptDir dir;
    dir.write("01_good.sql", "create table good (a int)\ngo\n");
    dir.write("02_bad.sql", "create table fine (a int)\ngo\ncreate table broken (a int\ngo\n");

    Db db;
    try {
        applySchema(db.conn, dir.path());
        FAIL() << "a broken script was applied";
    } catch (const SchemaError& e) {
        EXPECT_NE(std::string(e.what()).find("02_bad.sql: create table broken"), std::string::npos)
            << e.what();
    }
    EXPECT_TRUE(rows(db, "select name from sqlite_master").empty());
}

TEST(SchemaScripts, InventoryLinesNeedFourFields) {
    struct Case {
        const char* name;
        QByteArray text;
        bool valid;
    };
    const std::vector<Case> cases = {
        {"complete", "table\tcolumn\ttype\tmodule\nBs_User\tUserId\tvarchar(20)\tBs\n", true},
        {"blank lines are skipped", "table\tcolumn\ttype\tmodule\n\nBs_User\tUserId\tvarchar(20)\tBs\n\n",
         true},
        {"missing module", "table\tcolumn\ttype\tmodule\nBs_User\tUserId\tvarchar(20)\n", false},
        {"empty type", "table\tcolumn\ttype\tmodule\nBs_User\tUserId\t\tBs\n", false},
        {"extra field", "table\tcolumn\ttype\tmodule\nBs_User\tUserId\tint\tBs\tx\n", false},
    };
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    for (const Case& c : cases) {
        const QString path = dir.filePath(QStringLiteral("inventory.tsv"));
        QFile f(path);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write(c.text);
        f.close();
        if (c.valid)
            EXPECT_EQ(readInventory(path).size(), 1u) << c.name;
        else
            EXPECT_THROW(readInventory(path), SchemaError) << c.name;
    }
    EXPECT_THROW(readInventory(dir.filePath(QStringLiteral("missing.tsv"))), SchemaError);
}

TEST(SchemaScripts, ReadmeDescribesEveryTable) {
    QFile file(schemaDir() + QStringLiteral("/README.md"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString readme = QString::fromUtf8(file.readAll());
    QSet<QString> missing;
    for (const InventoryColumn& item : inventory())
        if (!readme.contains(QLatin1Char('`') + item.table + QLatin1Char('`'))) missing.insert(item.table);
    EXPECT_TRUE(missing.isEmpty()) << QStringList(missing.values()).join(", ").toStdString();
}

// ------------------------------------------------------------------ the suite's schema

class EmbeddedSchema : public ::testing::Test {
protected:
    void SetUp() override {
        try {
            applySchema(db_.conn, schemaDir());
        } catch (const std::exception& e) {
            FAIL() << e.what();
        }
    }
    Db& db() { return db_; }

    QStringList tables() {
        QStringList names;
        for (const QStringList& r :
             rows(db(), "select name from sqlite_master where type = 'table' and name not like 'sqlite%'"))
            names << r[0];
        return names;
    }

private:
    Db db_;
};

TEST_F(EmbeddedSchema, HoldsEveryInventoryColumnWithItsKind) {
    for (const InventoryColumn& item : inventory()) {
        const auto columns = db().catalog().tableColumns(item.table);
        ASSERT_TRUE(columns.has_value()) << "no table " << item.table.toStdString();
        const auto found =
            std::find_if(columns->begin(), columns->end(), [&](const dialect::CatalogColumn& c) {
                return c.name.compare(item.column, Qt::CaseInsensitive) == 0;
            });
        ASSERT_NE(found, columns->end()) << item.table.toStdString() << "." << item.column.toStdString();
        const ColumnKind expected = dialect::columnKindFromDeclType(item.type);
        EXPECT_NE(expected, ColumnKind::Unknown) << item.type.toStdString();
        EXPECT_EQ(found->kind, expected) << item.table.toStdString() << "." << item.column.toStdString();
    }
}

TEST_F(EmbeddedSchema, HasNothingTheInventoryLacks) {
    QHash<QString, QSet<QString>> listed;
    QHash<QString, QString> moduleOf;
    for (const InventoryColumn& item : inventory()) {
        EXPECT_FALSE(listed[lower(item.table)].contains(lower(item.column)))
            << "listed twice: " << item.table.toStdString() << "." << item.column.toStdString();
        listed[lower(item.table)].insert(lower(item.column));
        EXPECT_EQ(moduleOf.value(lower(item.table), item.module), item.module)
            << item.table.toStdString() << " is listed under two modules";
        moduleOf.insert(lower(item.table), item.module);
    }
    const QStringList created = tables();
    EXPECT_EQ(created.size(), listed.size());
    for (const QString& table : created) {
        ASSERT_TRUE(listed.contains(lower(table))) << "not in the inventory: " << table.toStdString();
        for (const QStringList& r :
             rows(db(), QStringLiteral("select name from pragma_table_info('%1')").arg(table)))
            EXPECT_TRUE(listed[lower(table)].contains(lower(r[0])))
                << "not in the inventory: " << table.toStdString() << "." << r[0].toStdString();
    }
}

TEST_F(EmbeddedSchema, DeclaresTheKeysTheSuiteReliesOn) {
    struct Case {
        const char* table;
        QStringList key;
    };
    const std::vector<Case> cases = {
        {"bs_paralistB", {"parfieldname"}},
        {"bs_paralistI", {"parfieldname"}},
        {"bs_paralistS", {"parfieldname"}},
        {"Bs_BillSet", {"billid"}},
        {"bs_billsetItem", {"billid"}},
        {"BillCode", {"billid"}},
        {"bs_billcheck", {"billid", "checklevel"}},
        {"Bs_BillCheckRec", {"billid", "refno", "checklevel"}},
        {"Bs_UserAuth", {"userid", "modid"}},
        {"Sy_GridFieldDis", {"userid", "packname", "formname", "gridname", "colno"}},
        {"St_onhand", {"partno", "batchno", "lotno", "location"}},
        {"st_Lot", {"partno", "lotno"}},
        {"St_PartSerial", {"partno", "serialno"}},
        {"Bs_ProdList", {"partno"}},
        {"Bs_PartUnit", {"partno", "unit"}},
        {"Bs_Customer", {"custno"}},
        {"Bs_Vendor", {"vendno"}},
        {"Bs_Depart", {"departno"}},
        {"Bs_User", {"userid"}},
        {"Bs_Employee", {"empid"}},
        {"Bs_Location", {"stkno"}},
        {"Rp_Bank", {"bankno"}},
        {"AC_Currency", {"currency"}},
        {"Ac_AccYm", {"period"}},
        {"En_Equip", {"equipno"}},
        {"En_WorkCent", {"wcno"}},
        {"en_WcEquip", {"wcno", "equipno"}},
        {"s_FieldChDef", {"sfieldname"}},
        {"s_chartshow", {"modid", "seqno"}},
        {"pl_jbmain", {"refno"}},
        {"pl_JbBom", {"refjobno", "lineid"}},
        {"pl_JbRout", {"refjobno", "seqno"}},
        {"sl_ship", {"refno"}},
        {"Po_Order", {"refno"}},
        {"T_RInvHea", {"refno"}},
    };
    for (const Case& c : cases) EXPECT_EQ(primaryKey(db(), c.table), c.key) << c.table;

    // Every note detail table is keyed by its note and line.
    for (const QString& table : tables())
        if (table.endsWith(QLatin1String("Dtl"), Qt::CaseInsensitive))
            EXPECT_EQ(primaryKey(db(), table), (QStringList{"refno", "lineid"})) << table.toStdString();
}

TEST_F(EmbeddedSchema, IndexesTheFrequentLookups) {
    struct Case {
        const char* table;
        const char* column;
    };
    const std::vector<Case> cases = {
        {"Bs_BillCheckRec", "refno"}, {"St_onhand", "location"},    {"st_partRec", "batchno"},
        {"Po_StkInDtl", "partno"},    {"pl_JbBom", "compno"},       {"pl_JbRout", "wcno"},
        {"Sy_Log", "modid"},          {"Bs_Log", "modid"},          {"rp_racctRec", "custno"},
        {"rp_PacctRec", "vendno"},    {"sl_order", "slordno"},      {"Po_Order", "pono"},
        {"Po_Recv", "recvno"},        {"Po_StkIn", "shipno"},       {"pl_jbmain", "jobno"},
        {"sl_ship", "noteno"},        {"T_RInvHea", "noteno"},      {"T_pInvHea", "noteno"},
        {"St_PartSerial", "partno"},  {"pm_IssWipDtl", "refjobno"}, {"Sy_NoteBackup", "refno"},
    };
    for (const Case& c : cases)
        EXPECT_TRUE(leadingIndexedColumns(db(), c.table).contains(c.column)) << c.table << "." << c.column;
}

// Inserts the key columns of a table only (every other column is nullable or has a
// default), then the same key changed by `vary` in its text columns.
TEST_F(EmbeddedSchema, KeysRefuseDuplicatesAsTheServerCompares) {
    struct Case {
        const char* name;
        std::function<QString(const QString&)> vary;
    };
    const std::vector<Case> cases = {
        {"the same key", [](const QString& s) { return s; }},
        {"a key differing in case", [](const QString& s) { return s.toUpper(); }},
        {"a key with a trailing blank", [](const QString& s) { return s + QLatin1Char(' '); }},
    };
    for (const Case& c : cases) {
        QStringList accepted;
        for (const QString& table : tables()) {
            const QStringList key = primaryKey(db(), table);
            if (key.isEmpty()) continue;
            QStringList first, second;
            for (const QStringList& r : rows(
                     db(),
                     QStringLiteral("select name, type from pragma_table_info('%1') where pk > 0 order by pk")
                         .arg(table))) {
                if (dialect::columnKindFromDeclType(r[1]) == ColumnKind::Text) {
                    first << QStringLiteral("'Key%1'").arg(first.size());
                    second << QStringLiteral("'%1'").arg(c.vary(QStringLiteral("Key%1").arg(second.size())));
                } else {
                    first << QString::number(first.size() + 1);
                    second << QString::number(second.size() + 1);
                }
            }
            const QString insert =
                QStringLiteral("insert into %1 (%2) values (%3)").arg(table, key.join(','));
            ASSERT_EQ(db().errorOf(insert.arg(first.join(','))), "") << table.toStdString();
            if (!QString::fromStdString(db().errorOf(insert.arg(second.join(',')))).contains("constraint failed"))
                accepted << table;
            db().run(QStringLiteral("delete from %1").arg(table));
        }
        EXPECT_TRUE(accepted.isEmpty()) << c.name << " was accepted by " << accepted.join(", ").toStdString();
    }
}

// ------------------------------------------------------------------ server procedures

struct Parameter {
    QString name;
    QString type;
    bool output;
    bool operator==(const Parameter&) const = default;
};

void PrintTo(const Parameter& p, std::ostream* os) {
    *os << p.name.toStdString() << ' ' << p.type.toStdString() << (p.output ? " output" : "");
}

// The procedures of procedures.sql with their parameter lists, as the server reads them.
QHash<QString, std::vector<Parameter>> declaredProcedures(const QStringList& batches) {
    static const QRegularExpression header(
        QStringLiteral("^\\s*(?:--[^\\n]*\\n\\s*)*create\\s+procedure\\s+(\\w+)(.*?)\\bas\\b"),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression parameter(
        QStringLiteral("(@\\w+)\\s+(\\w+(?:\\(\\d+(?:,\\d+)?\\))?)\\s*(output)?"),
        QRegularExpression::CaseInsensitiveOption);
    QHash<QString, std::vector<Parameter>> procedures;
    for (const QString& batch : batches) {
        const auto m = header.match(batch);
        if (!m.hasMatch()) continue;
        std::vector<Parameter>& list = procedures[m.captured(1)];
        for (auto it = parameter.globalMatch(m.captured(2)); it.hasNext();) {
            const auto p = it.next();
            list.push_back({p.captured(1), p.captured(2).toLower(), !p.captured(3).isEmpty()});
        }
    }
    return procedures;
}

QStringList procedureBatches() {
    QFile file(schemaDir() + QStringLiteral("/mssql/procedures.sql"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return dialect::splitBatches(QString::fromUtf8(file.readAll()));
}

TEST(ServerProcedures, TakeTheParametersTheLibraryPasses) {
    struct Case {
        const char* procedure;
        std::vector<Parameter> parameters;
    };
    const std::vector<Case> cases = {
        {"bs_Get_BillSeqNo", {{"@BillType", "int", false}, {"@ResultStr", "varchar(20)", true}}},
        {"sy_BackupNote",
         {{"@iRefNo", "int", false},
          {"@iNewRefNo", "int", false},
          {"@sTableName", "varchar(100)", false},
          {"@iType", "int", false}}},
        {"Pm_CheckWipIssQty",
         {{"@RefNo", "int", false},
          {"@iRes", "int", true},
          {"@OverPartNo", "varchar(100)", true},
          {"@IssQty", "float", true},
          {"@PlanQty", "float", true},
          {"@IssuedQty", "float", true}}},
        {"Pm_CheckWipAddIssQty",
         {{"@RefNo", "int", false},
          {"@iRes", "int", true},
          {"@OverPartNo", "varchar(100)", true},
          {"@IssQty", "float", true},
          {"@DueQty", "float", true}}},
    };
    const QStringList batches = procedureBatches();
    const auto declared = declaredProcedures(batches);
    // The server wants each procedure alone in its batch.
    EXPECT_EQ(batches.size(), qsizetype(cases.size()));
    EXPECT_EQ(declared.size(), qsizetype(cases.size()));
    for (const Case& c : cases) {
        ASSERT_TRUE(declared.contains(c.procedure)) << c.procedure;
        EXPECT_EQ(declared[c.procedure], c.parameters) << c.procedure;
    }
}

TEST(ServerProcedures, NameOnlyTablesAndColumnsOfTheSchema) {
    QHash<QString, QSet<QString>> columnsOf;
    for (const InventoryColumn& item : inventory()) columnsOf[lower(item.table)].insert(lower(item.column));

    // Tables named after from/join/update/into, and columns written as alias.column.
    static const QRegularExpression tableRef(
        QStringLiteral("\\b(?:from|join|update|into)\\s+([A-Za-z_]\\w*)"),
        QRegularExpression::CaseInsensitiveOption);
    const QSet<QString> serverCatalog = {"syscolumns", "sysobjects"};
    for (const QString& batch : procedureBatches()) {
        QString code = batch;
        code.remove(QRegularExpression(QStringLiteral("--[^\\n]*")));
        code.remove(QRegularExpression(QStringLiteral("N?'[^']*'")));  // dynamic SQL is built per table
        for (auto it = tableRef.globalMatch(code); it.hasNext();) {
            const QString table = it.next().captured(1);
            if (serverCatalog.contains(lower(table))) continue;
            EXPECT_TRUE(columnsOf.contains(lower(table))) << table.toStdString();
        }
    }
    struct Case {
        const char* table;
        QStringList columns;
    };
    const std::vector<Case> used = {
        {"bs_billsetItem",
         {"billid", "prefix", "codeformat", "encodetype", "seqwidth", "curseq", "curperiod"}},
        {"Sy_NoteBackup", {"newrefno", "tablename", "itype", "refno", "rowscopied", "backupdate"}},
        {"pm_IssWipDtl", {"refno", "refjobno", "partno", "qty"}},
        {"pl_JbBom", {"refjobno", "compno", "planissqty", "issuedqty", "needaddqty", "addissqty"}},
    };
    for (const Case& c : used)
        for (const QString& column : c.columns)
            EXPECT_TRUE(columnsOf[lower(c.table)].contains(column)) << c.table << "." << column.toStdString();
}

}  // namespace
}  // namespace kivdb::integrity
