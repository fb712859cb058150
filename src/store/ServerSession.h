#pragma once
#include "store/MariaConnection.h"
#include <QString>
#include <functional>
#include <optional>
#include <vector>

namespace store {

/// A connection to a server's database for work on the whole of it, in the server's own language; also to a
/// database that is none of ours yet. What fails is thrown, and nothing is tried again.
class ServerSession {
  public:
    /// Throws what Connection::Open throws.
    explicit ServerSession(const ConnectionString& server);

    void run(const QByteArray& sql);
    /// The first column of the first row; nothing without a row or for NULL.
    std::optional<QByteArray> value(const QByteArray& sql);
    qint64 number(const QByteArray& sql);
    /// Of the first column.
    QByteArrayList list(const QByteArray& sql);

    using Cells = std::vector<std::optional<QByteArrayView>>;
    /// The rows as they come.
    void read(const QByteArray& sql, const std::function<void(const Cells&)>& take);

    const QString& database() const { return m_connection.database(); }

  private:
    MariaAnswer ask(const QByteArray& sql, bool stream = false);

    MariaConnection m_connection;
};

/// A text or a name as the server reads it.
QByteArray serverText(const QString& text);
QByteArray serverName(const QString& name);

} // namespace store
