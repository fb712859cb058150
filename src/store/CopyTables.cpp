#include "store/CopyTables.h"
#include "common/RunTimeError.h"
#include "store/Connection.h"
#include <QHashFunctions>
#include <algorithm>
#include <numeric>

namespace store {

using namespace Qt::StringLiterals;

namespace {

size_t mark(ColumnType type, const common::Value& value, size_t seed) {
    constexpr int kNothing = 1;
    if (value.isNull())
        return qHash(kNothing, seed);
    if (value.isText())
        return qHash(value.toText(), seed);
    if (type == ColumnType::Double || type == ColumnType::Date || !value.isInteger())
        return qHash(value.isDate() ? value.toSerial() : value.toDouble(), seed);
    return qHash(value.toLong(), seed);
}

/// What tells rows apart from others, in whatever order they come.
struct Contents {
    qint64 rows = 0;
    quint64 sum = 0;

    void add(const CopiedTable& table, const Row& row) {
        size_t seed = 0;
        for (size_t i = 0; i < row.size(); ++i)
            seed = mark(table.columns[i].type, row[i], seed + 1);
        ++rows;
        sum += seed;
    }

    friend bool operator==(const Contents&, const Contents&) = default;
};

bool hasCounter(const CopiedTable& table) {
    return std::any_of(table.columns.begin(), table.columns.end(),
                       [](const Column& column) { return column.counter; });
}

/// Each row is told twice: when it is copied, and when it is read back.
class Told {
  public:
    Told(const Progress& progress, qint64 total) : m_progress(progress), m_total(total) {}

    void row() {
        constexpr qint64 kBetweenWords = 500;
        if (++m_done % kBetweenWords == 0 && m_progress)
            m_progress(qMin(m_done, m_total), m_total);
    }

  private:
    const Progress& m_progress;
    const qint64 m_total;
    qint64 m_done = 0;
};

void copyTable(CopyEnd& source, CopyEnd& target, const CopiedTable& table, Told& told) {
    Contents given, taken;
    source.read(table, [&](const Row& row) {
        given.add(table, row);
        target.write(table, row);
        told.row();
    });
    target.finish();
    if (const qint64 key = hasCounter(table) ? source.lastKey(table) : 0; key > target.lastKey(table))
        target.setLastKey(table, key);
    target.read(table, [&](const Row& row) {
        taken.add(table, row);
        told.row();
    });
    if (given != taken)
        throw common::RunTimeError(
            common::kStoreFailure,
            u"Die Kopie der Tabelle \"%1\" stimmt nicht mit dem Original überein."_s.arg(table.name),
            u"%1 rows, %2 copied"_s.arg(given.rows).arg(taken.rows));
}

} // namespace

bool isOfTheMoment(const QString& table) {
    return table.startsWith(u"tbl_Stationen_"_s);
}

std::vector<CopiedTable> FileEnd::tables(Database database) {
    std::vector<CopiedTable> tables;
    for (const SchemaTable& table : tablesOf(database)) {
        if (isOfTheMoment(table.name))
            continue;
        CopiedTable copied{table.name, m_engine.columnsOf(table.name), table.hasKey};
        if (copied.columns.empty())
            throw common::RunTimeError(common::kStoreFailure,
                                       u"In der Datenbank fehlt die Tabelle \"%1\"."_s.arg(table.name));
        if (!table.hasKey)
            copied.columns.push_back({u"rowid"_s, ColumnType::Long});
        tables.push_back(std::move(copied));
    }
    return tables;
}

qint64 FileEnd::rowsOf(const CopiedTable& table) {
    const auto rows = m_engine.query(u"SELECT Count(*) AS Anzahl FROM "_s + table.name, false);
    return rows->next() ? rows->value(0).toLong() : 0;
}

void FileEnd::read(const CopiedTable& table, const std::function<void(const Row&)>& take) {
    const auto rows = m_engine.query(u"SELECT * FROM "_s + table.name, !table.hasKey);
    Row row(table.columns.size());
    while (rows->next()) {
        for (size_t i = 0; i < row.size(); ++i)
            row[i] = rows->value(int(i));
        take(row);
    }
}

void FileEnd::write(const CopiedTable& table, const Row& row) {
    m_engine.insert(table.name, table.columns, row);
}

namespace {

QString ofSequence(const CopiedTable& table) {
    return u" WHERE name = "_s + sqlText(table.name);
}

} // namespace

qint64 FileEnd::lastKey(const CopiedTable& table) {
    const auto rows = m_engine.query(u"SELECT seq FROM sqlite_sequence"_s + ofSequence(table), false);
    return rows->next() ? rows->value(0).toLong() : 0;
}

void FileEnd::setLastKey(const CopiedTable& table, qint64 key) {
    const QString number = QString::number(key);
    if (m_engine.execute(u"UPDATE sqlite_sequence SET seq = "_s + number + ofSequence(table)) == 0)
        m_engine.execute(
            u"INSERT INTO sqlite_sequence (name, seq) VALUES (%1, %2)"_s.arg(sqlText(table.name), number));
}

void copyTables(CopyEnd& source, CopyEnd& target, const std::vector<CopiedTable>& tables,
                const Progress& progress) {
    const qint64 rows =
        std::accumulate(tables.begin(), tables.end(), qint64(0),
                        [&](qint64 sum, const CopiedTable& table) { return sum + source.rowsOf(table); });
    Told told(progress, 2 * rows);
    for (const CopiedTable& table : tables)
        copyTable(source, target, table, told);
}

} // namespace store
