#pragma once
#include "store/ConnectionString.h"
#include "tests/support/Servers.h"
#include <QStringList>
#include <QTemporaryDir>
#include <array>
#include <memory>

namespace test {

/// A MariaDB of the tests' own, made by tools/test-server.
class DatabaseServer : public ServerProcess {
  public:
    /// One of this object's own, for tests that end it or change it; start() comes next. `options` are
    /// mariadbd's.
    explicit DatabaseServer(QStringList options = {});

    /// The one that ./test has started, else one for the whole of this process; null where there is none to
    /// be had, and then whyNotShared() tells why.
    static DatabaseServer* shared();
    static QString whyNotShared();

    /// As the program comes in, over TLS. It may do everything in the databases whose names begin with
    /// "tavolino", and nothing else.
    store::ConnectionString connection(const QString& database) const;
    /// "127.0.0.1:port"
    QString address() const;
    /// Rows of a statement as the server's administrator, on another road than the program's: columns divided
    /// by tabs.
    QStringList sql(const QString& statements);
    /// The server's own errors too.
    QString log() override;

    /// From the next start on it is a node of a cluster, on that port for the others; without them it founds
    /// the cluster.
    void setNode(int port, const QStringList& peers);

    void shareCertificate(const QString& folder) { m_tls = folder; }

  protected:
    QString program() const override;
    QStringList arguments() const override;

  private:
    explicit DatabaseServer(const QString& folder);

    QTemporaryDir m_own;
    QString m_folder, m_tls;
    QStringList m_options, m_peers;
    int m_nodePort = 0;
};

/// A name for a database of a test's own; what was made under it goes with this object.
class ServerDatabase {
  public:
    explicit ServerDatabase(DatabaseServer& server);
    ~ServerDatabase();
    ServerDatabase(const ServerDatabase&) = delete;
    ServerDatabase& operator=(const ServerDatabase&) = delete;

    const QString& name() const { return m_name; }

    store::ConnectionString connection() const { return m_server.connection(m_name); }

  private:
    DatabaseServer& m_server;
    QString m_name;
};

/// Three servers that are one, all on this machine.
class GaleraCluster {
  public:
    static constexpr int kNodes = 3;

    GaleraCluster();
    ~GaleraCluster();

    /// False where the machine has no cluster to offer; why() tells.
    bool isStarted() const { return m_started; }

    QString why();

    DatabaseServer& node(int index) { return *m_nodes.at(size_t(index)); }

    /// All of them in their order, as the program comes in.
    store::ConnectionString connection(const QString& database) const;
    /// A node that was killed or stopped comes back; true when it has all that the others have.
    bool restart(int index);
    /// Waits until the node says that it takes part and that it sees `size` nodes, itself included.
    bool waitForSize(int index, int size);

  private:
    QTemporaryDir m_folder;
    std::array<std::unique_ptr<DatabaseServer>, kNodes> m_nodes;
    std::array<int, kNodes> m_ports{};
    bool m_started = false;
};

} // namespace test
