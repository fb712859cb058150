#pragma once
#include "store/HeldWrites.h"
#include "store/MariaCatalogue.h"
#include "store/MariaConnection.h"
#include "store/MariaPlan.h"
#include "store/PlanCache.h"
#include <exception>
#include <optional>

namespace store {

class MariaCursor;

/// The engine of a MariaDB server, one of several that hold the same data. Each statement is one packet, and
/// writes of a transaction whose result is known wait for the next one. What failed because a server went
/// away is done again at the next one where that does no harm: reading, and writing outside a transaction,
/// which leaves a token behind and so is never done twice. In a transaction it is kTryAgain.
class MariaEngine : public Engine {
  public:
    /// Throws what Connection::Open throws, and kServerGone.
    explicit MariaEngine(const ConnectionString& parts);
    ~MariaEngine() override;

    qint64 execute(const QString& sql) override;
    std::unique_ptr<Cursor> query(const QString& sql, bool keyed) override;
    const std::vector<Column>& columnsOf(const QString& table) override;
    qint64 insert(const QString& table, const std::vector<Column>& columns,
                  const std::vector<common::Value>& values) override;
    void update(const QString& table, qint64 rowKey, const std::vector<Column>& columns,
                const std::vector<common::Value>& values) override;
    qint64 newKey(const QString& table) override;
    void begin() override;
    void commit() override;
    void rollback() override;

    bool inTransaction() const override { return m_transaction.has_value(); }

    void interrupt() override;

    int schemaVersion() const override { return m_connection.schemaVersion(); }

    /// Nothing is to be taken yet: throws kStoreFailure for an older schema.
    void takeSchemaSteps(const std::function<void()>& waiting) override;

    bool isWritable() const override { return !m_onlyReads; }

    void onlyRead() override;

    bool isShared() const override { return true; }

    double now() override { return m_connection.now(); }

    qint64 roundTrips() const override { return m_connection.roundTrips(); }

  private:
    friend class MariaCursor;

    struct Transaction {
        /// At the server as well.
        bool begun = false;
        bool written = false;
        /// Why nothing can be done in it any more.
        std::exception_ptr doom;
        /// By a node without majority: nothing of it was done.
        bool refused = false;
    };

    using Packet = QList<QByteArray>;

    /// Sends what is asked for, whatever still comes in from before.
    std::vector<MariaAnswer> send(const Packet& packet, bool stream = false);
    MariaAnswer read(const QByteArray& sql, const QString& statement);
    MariaAnswer ask(const QByteArray& sql, const QString& statement);
    MariaAnswer write(const QByteArray& sql, const QString& statement);
    MariaAnswer writeAlone(const QByteArray& sql, const QString& statement);
    MariaAnswer writeInTransaction(const QByteArray& sql, const QString& statement);
    void define(const QByteArray& sql, const QString& statement);
    /// The first packet begins the transaction; what was held back goes in front of `sql`.
    MariaAnswer sendInTransaction(const Packet& further, size_t wanted, const QString& statement);
    void flushWhereLarge();
    [[noreturn]] void doom(const MariaFailure& failure, const QString& statement);
    /// What a lost connection has left open: the answer kept with the token where it was committed; nothing
    /// where it never will be.
    std::optional<MariaAnswer> settle(const QByteArray& token);
    [[noreturn]] void fail(const MariaFailure& failure, const QString& statement);
    void rollBackQuietly();
    void readCatalogue();
    [[noreturn]] static void refuse(const QString& what);
    /// Throws where the connection was lost, unless it may be tried again.
    void lostOrThrow(const MariaFailure& failure, int attempt, const QString& statement);
    qint64 keyOf(qint64 promised, const QString& statement);

    void streamEnded();
    bool streamFailed() const;
    [[noreturn]] void throwStreamError();
    void breakStream();
    void streamBroken();

    MariaConnection m_connection;
    MariaCatalogue m_catalogue;
    PlanCache<MariaPlan> m_plans;
    std::optional<Transaction> m_transaction;
    HeldWrites m_held;
    MariaCursor* m_stream = nullptr;
    bool m_onlyReads = false;
};

} // namespace store
