#include "store/RowMark.h"
#include "store/Lookups.h"
#include "store/StoreGlobals.h"
#include <QCryptographicHash>

using namespace Qt::StringLiterals;

namespace store {
namespace {

QString changed(const QStringList& fields) {
    const QString named = fields.isEmpty() ? QString() : u"\n\nGeändert: "_s + fields.join(u", "_s);
    return u"Dieser Datensatz wurde inzwischen an einer anderen Station geändert."_s + named +
           u"\n\nIhre Angaben sind nicht gespeichert. Laden Sie den Datensatz noch einmal, um mit dem neuen "
           u"Stand zu arbeiten."_s;
}

} // namespace

Overtaken::Overtaken(const QStringList& fields) : Overtaken(changed(fields), false) {
}

Overtaken Overtaken::byDeletion() {
    return {u"Dieser Datensatz wurde inzwischen an einer anderen Station gelöscht."_s, true};
}

RowMark::RowMark(const QStringList& queries) : m_queries(queries) {
    read();
}

RowMark::RowMark(QStringList queries, QByteArray digest) :
    m_queries(std::move(queries)), m_digest(std::move(digest)) {
}

void RowMark::read() {
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (const QString& query : m_queries) {
        Cells cells;
        Recordset rows;
        for (const OpenRecordset open(rows, query, ConnMain); !rows.Eof(); rows.MoveNext())
            for (const Column& column : rows.Columns())
                if (!column.name.contains(u"_Updated"_s))
                    cells.emplaceBack(column.name, rows.Fields(column.name).text());
        for (const auto& [name, value] : cells)
            hash.addData((name + QChar::Null + value + QChar::Null).toUtf8());
        hash.addData(QByteArray(1, '\1'));
        m_cells << cells;
    }
    m_digest = hash.result();
}

void RowMark::require() const {
    if (!isSet())
        return;
    const RowMark now(m_queries);
    if (now.m_digest == m_digest)
        return;
    if (now.m_cells.first().isEmpty())
        throw Overtaken::byDeletion();
    throw Overtaken(changedFields(now));
}

QStringList RowMark::changedFields(const RowMark& now) const {
    QStringList fields;
    // Of a digest nobody knows the cells.
    for (qsizetype query = 0; query < m_cells.size(); ++query) {
        const Cells& before = m_cells[query];
        const Cells& after = now.m_cells[query];
        for (qsizetype i = 0; i < before.size() && before.size() == after.size(); ++i)
            if (before[i] != after[i])
                fields << fieldName(after[i].first);
    }
    fields.removeDuplicates();
    return fields;
}

RowMark markRow(const QString& table, qint64 key) {
    return RowMark(QStringList{rowQuery(table, key)});
}

void deleteMarked(const QString& table, qint64 key, const RowMark& mark) {
    transact(ConnMain, [&] {
        mark.require();
        deleteRow(table, key);
    });
}

QString fieldName(const QString& column) {
    return column.mid(column.indexOf(u'_') + 1);
}

} // namespace store
