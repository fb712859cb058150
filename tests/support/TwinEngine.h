#pragma once
#include "store/Rows.h"
#include <QHash>

namespace test {

/// Two engines as one: what is asked of it is asked of both, and a difference between their answers fails the
/// test. The first one's are given. Rows are compared in their order where the statement asks for one.
class TwinEngine : public store::Engine {
  public:
    TwinEngine(std::unique_ptr<store::Engine> first, std::unique_ptr<store::Engine> second) :
        m_first(std::move(first)), m_second(std::move(second)) {}

    qint64 execute(const QString& sql) override;
    std::unique_ptr<store::Cursor> query(const QString& sql, bool keyed) override;
    const std::vector<store::Column>& columnsOf(const QString& table) override;
    qint64 insert(const QString& table, const std::vector<store::Column>& columns,
                  const std::vector<common::Value>& values) override;
    void update(const QString& table, qint64 rowKey, const std::vector<store::Column>& columns,
                const std::vector<common::Value>& values) override;
    qint64 newKey(const QString& table) override;
    void begin() override;
    void commit() override;
    void rollback() override;

    bool inTransaction() const override { return m_first->inTransaction(); }

    void interrupt() override;

    int schemaVersion() const override { return m_first->schemaVersion(); }

    void takeSchemaSteps(const std::function<void()>& waiting) override { m_first->takeSchemaSteps(waiting); }

    bool isWritable() const override { return m_first->isWritable(); }

    void onlyRead() override;

    bool isShared() const override { return false; }

    double now() override { return m_first->now(); }

    qint64 roundTrips() const override { return 0; }

    store::Engine& first() { return *m_first; }

  private:
    void learnKeys(const QString& sql, store::Rows ours, store::Rows theirs);

    std::unique_ptr<store::Engine> m_first, m_second;
    /// The second one's key of a row, by its table and the first one's key.
    QHash<QPair<QString, qint64>, qint64> m_keys;
};

} // namespace test
