#pragma once
#include "common/Guard.h"
#include "store/Engine.h"
#include <QSet>
#include <QString>
#include <functional>
#include <memory>
#include <vector>

namespace store {

class Reader;
class Recordset;

/// Called now and again by who waits for work of another thread. What it throws gives the work up. Empty for
/// work that nobody watches.
using Waiting = std::function<void()>;

/// A connection to one database file, under the names of the interface that the firm's statements were
/// written for. Failures throw common::RunTimeError; nothing is caught here.
class Connection {
  public:
    Connection() = default;
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Opens an existing database file. Throws for a missing file (kFileNotFound), a damaged one
    /// (kStoreFailure), a wrong password (kPasswordRefused), a schema of a newer program (kSchemaTooNew), and
    /// when open already (kObjectOpen).
    void Open(const QString& connectionString);
    /// Closes its recordsets first. What is closed is one file without side files, once no other connection
    /// holds it. Closing a closed connection throws kObjectClosed.
    void Close();

    bool IsOpen() const { return m_engine != nullptr; }

    /// Runs UPDATE, DELETE or INSERT text; gives the number of rows touched.
    qint64 Execute(const QString& sql);

    /// Runs work that only reads. Where somebody waits for it, it has a connection and a thread of its own,
    /// and work of others may come in meanwhile; its errors come out here. It must not touch what the
    /// caller's thread can change.
    void Read(const std::function<void(Engine&)>& job, const Waiting& waiting = {});

    bool InTransaction() const { return m_engine && m_engine->inTransaction(); }

    /// The string as it was given to Open, for a grid's data control.
    const QString& ConnectionText() const { return m_connectionString; }

    /// The engine; throws kObjectClosed when the connection is closed.
    Engine& engine() const;

  private:
    friend class Recordset;
    friend class Transaction;
    void BeginTrans();
    void CommitTrans();
    void RollbackTrans();

    std::unique_ptr<Engine> m_engine;
    QString m_connectionString;
    QSet<Recordset*> m_recordsets;
    /// One, unless somebody who waits lets another one in who has to wait.
    std::vector<std::shared_ptr<Reader>> m_readers;
};

/// Does `work` in one transaction: all of it is written, or none where it throws. Where another writer was in
/// the way (kTryAgain) it is done anew, some times: it assigns and does not add up, and what else it touches
/// than the database it touches in a way that can be repeated.
void transact(Connection& connection, const std::function<void()>& work);

/// One attempt at a transaction, its writer's own: begins at construction, rolls back when the scope is left
/// before commit(), which nobody else can. No event loop runs meanwhile, so that no other work gets into it.
class Transaction {
  public:
    explicit Transaction(Connection& connection);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    void commit();

  private:
    const common::NoEventLoop m_alone;
    Connection& m_connection;
    bool m_done = false;
};

/// `text` as an SQL literal: quotes inside are doubled. The same for every engine that speaks the firm's
/// dialect.
QString sqlText(const QString& text);

} // namespace store
