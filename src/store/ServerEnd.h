#pragma once
#include "store/CopyTables.h"
#include "store/ServerSession.h"

namespace store {

/// A server's end of a copy, of tables whose names bear something in front.
class ServerEnd : public CopyEnd {
  public:
    explicit ServerEnd(ServerSession& session, const QString& front = {}) :
        m_session(session), m_front(front) {}

    qint64 rowsOf(const CopiedTable& table) override;
    void read(const CopiedTable& table, const std::function<void(const Row&)>& take) override;
    void write(const CopiedTable& table, const Row& row) override;
    void finish() override;
    qint64 lastKey(const CopiedTable& table) override;
    void setLastKey(const CopiedTable& table, qint64 key) override;

  private:
    QByteArray nameOf(const CopiedTable& table) const;

    ServerSession& m_session;
    const QString m_front;
    /// The INSERT that is being put together.
    QByteArray m_head, m_rows;
};

} // namespace store
