#pragma once
#include "store/Dialect.h"
#include "store/MariaConnection.h"
#include <QHash>

namespace store {

/// What the tables and views of a server's database consist of. Case of names does not matter.
class MariaCatalogue : public Names {
  public:
    static const char* const kQuery;

    /// Takes the answer to kQuery. Throws kStoreFailure where texts are kept under another collation than
    /// this program's.
    void read(const MariaResult& rows, const QString& database);

    /// In the schema's order, without the key that the program does not see; empty for no table or view.
    const std::vector<Column>& columnsOf(const QString& table) const;
    ColumnType typeOf(const QString& table, const QString& column) const override;
    QString rowKey(const QString& table) const override;
    QString tableName(const QString& table) const override;
    /// Whether the key is one of the columns that the program sees.
    bool hasOwnKey(const QString& table) const;

  private:
    struct Table {
        QString name;
        std::vector<Column> columns;
        QString key;
        bool keyShows = false;
    };

    const Table* find(const QString& table) const;

    QHash<QString, Table> m_tables;
};

} // namespace store
