#include "store/MariaCatalogue.h"
#include "common/RunTimeError.h"
#include <algorithm>
#include <mysql.h>

namespace store {

using namespace Qt::StringLiterals;

namespace {

enum Place { TableName, ColumnName, Type, Comment, Extra, Key, Collation };

ColumnType typeOfColumn(const QString& type, const QString& comment) {
    if (comment == u"YESNO")
        return ColumnType::YesNo;
    if (comment == u"DATE")
        return ColumnType::Date;
    if (type == u"double" || type == u"float")
        return ColumnType::Double;
    if (type.endsWith(u"int"))
        return ColumnType::Long;
    return type.endsWith(u"text") || type.endsWith(u"char") ? ColumnType::Text : ColumnType::Any;
}

/// As this program compares texts, a blank at the end included.
bool isOurs(const QString& collation) {
    return collation.isEmpty() || collation.endsWith(u"uca1400_nopad_as_ci") || collation.endsWith(u"_bin");
}

} // namespace

const char* const MariaCatalogue::kQuery =
    "SELECT table_name, column_name, data_type, column_comment, extra, column_key, collation_name "
    "FROM information_schema.columns WHERE table_schema = database() ORDER BY table_name, ordinal_position";

void MariaCatalogue::read(const MariaResult& rows, const QString& database) {
    m_tables.clear();
    while (const MYSQL_ROW row = mysql_fetch_row(rows.get())) {
        const auto text = [&](Place place) { return QString::fromUtf8(row[place]); };
        if (!isOurs(text(Collation)))
            throw common::RunTimeError(
                common::kStoreFailure,
                u"Die Datenbank \"%1\" auf dem Server vergleicht Texte anders, als es Tavolino braucht. Bitte legen Sie sie neu an."_s
                    .arg(database),
                text(TableName) + u'.' + text(ColumnName) + u": "_s + text(Collation));
        Table& table = m_tables[text(TableName).toLower()];
        table.name = text(TableName);
        const bool hidden = text(Extra).contains(u"INVISIBLE"_s);
        if (text(Key) == u"PRI") {
            table.key = text(ColumnName);
            table.keyShows = !hidden;
        }
        if (!hidden)
            table.columns.push_back({text(ColumnName), typeOfColumn(text(Type), text(Comment)),
                                     text(Comment) == u"COUNTER" && text(Key) == u"PRI"});
    }
}

const MariaCatalogue::Table* MariaCatalogue::find(const QString& table) const {
    const auto found = m_tables.constFind(table.toLower());
    return found == m_tables.constEnd() ? nullptr : &*found;
}

const std::vector<Column>& MariaCatalogue::columnsOf(const QString& table) const {
    static const std::vector<Column> none;
    const Table* const known = find(table);
    return known ? known->columns : none;
}

ColumnType MariaCatalogue::typeOf(const QString& table, const QString& column) const {
    const std::vector<Column>& columns = columnsOf(table);
    const auto found = std::find_if(columns.begin(), columns.end(), [&](const Column& one) {
        return one.name.compare(column, Qt::CaseInsensitive) == 0;
    });
    return found == columns.end() ? ColumnType::Any : found->type;
}

QString MariaCatalogue::rowKey(const QString& table) const {
    const Table* const known = find(table);
    return known && !known->key.isEmpty() ? known->key : u"rowid"_s;
}

QString MariaCatalogue::tableName(const QString& table) const {
    const Table* const known = find(table);
    return known ? known->name : table;
}

bool MariaCatalogue::hasOwnKey(const QString& table) const {
    const Table* const known = find(table);
    return known && known->keyShows;
}

} // namespace store
