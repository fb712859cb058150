#pragma once
#include "common/RunTimeError.h"
#include <QByteArray>
#include <QList>
#include <QStringList>
#include <utility>

namespace store {

/// Another station has changed or deleted what is to be written; nothing is written then. The user is told
/// and the program goes on, see platform/Saving.h.
class Overtaken : public common::RunTimeError {
  public:
    static constexpr int kNumber = 4006;

    /// `fields` are named as the user knows them.
    explicit Overtaken(const QStringList& fields);
    static Overtaken byDeletion();

    bool isGone() const { return m_gone; }

  private:
    Overtaken(const QString& sentence, bool gone) : RunTimeError(kNumber, sentence), m_gone(gone) {}

    bool m_gone;
};

/// What some queries delivered when a form loaded a record, so that saving can tell whether another station
/// has changed it since: read it before the values, require it in the transaction that writes, before the
/// first write. The first query is the record's own row; all are in an order of their own. What the program
/// notes in a row for the web shop's transfer does not count.
class RowMark {
  public:
    /// Of a new record: nothing is required.
    RowMark() = default;
    explicit RowMark(const QStringList& queries);
    /// One that was kept by its digest.
    RowMark(QStringList queries, QByteArray digest);

    /// Throws Overtaken where the queries deliver something else now.
    void require() const;

    bool isSet() const { return !m_queries.isEmpty(); }

    const QByteArray& digest() const { return m_digest; }

  private:
    /// Name and value, of all rows of a query.
    using Cells = QList<std::pair<QString, QString>>;

    void read();
    QStringList changedFields(const RowMark& now) const;

    QStringList m_queries;
    QList<Cells> m_cells;
    QByteArray m_digest;
};

/// Of the row of that key, the column lng_ID.
RowMark markRow(const QString& table, qint64 key);
/// Deletes the row of that key, as long as the mark holds.
void deleteMarked(const QString& table, qint64 key, const RowMark& mark);

/// A column as the user knows it: "Strasse" of txt_Strasse.
QString fieldName(const QString& column);

} // namespace store
