#include "tests/support/DatabaseServer.h"
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTcpServer>
#include <QThread>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace test {
namespace {

constexpr int kMillisecondsToJoin = 60'000;

/// In memory where the system has such a folder, as the test firm.
QString folderTemplate() {
    const QString memory = u"/dev/shm"_s;
    return (QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) + u"/tavolino-server-XXXXXX"_s;
}

int freePort() {
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost);
    return probe.serverPort();
}

/// Where ./test says that its server stands, "" without one.
QString givenFolder() {
    return qEnvironmentVariable("TAVOLINO_TEST_SERVER");
}

QString& reason() {
    static QString text;
    return text;
}

} // namespace

DatabaseServer::DatabaseServer(QStringList options) :
    m_own(folderTemplate()), m_folder(m_own.path()), m_options(std::move(options)) {
}

DatabaseServer::DatabaseServer(const QString& folder) : m_folder(folder) {
    QFile port(folder + u"/port"_s);
    EXPECT_TRUE(port.open(QIODevice::ReadOnly)) << "TAVOLINO_TEST_SERVER is no server's folder";
    setPort(port.readAll().trimmed().toInt());
}

DatabaseServer* DatabaseServer::shared() {
    static const std::unique_ptr<DatabaseServer> server = [] {
        if (!givenFolder().isEmpty())
            return std::unique_ptr<DatabaseServer>(new DatabaseServer(givenFolder()));
        auto own = std::make_unique<DatabaseServer>();
        if (!own->start()) {
            reason() = own->log();
            own.reset();
        }
        return own;
    }();
    return server.get();
}

QString DatabaseServer::whyNotShared() {
    return reason();
}

store::ConnectionString DatabaseServer::connection(const QString& database) const {
    store::ConnectionString parts;
    parts.servers = {address()};
    parts.database = database;
    parts.user = u"tavolino"_s;
    parts.password = u"Käse & 'Brot'"_s;
    parts.authority = (m_tls.isEmpty() ? m_folder + u"/tls"_s : m_tls) + u"/ca.pem"_s;
    return parts;
}

QString DatabaseServer::address() const {
    return u"127.0.0.1:%1"_s.arg(port());
}

QStringList DatabaseServer::sql(const QString& statements) {
    QProcess client;
    client.start(u"mariadb"_s,
                 {u"--no-defaults"_s, u"--batch"_s, u"--skip-column-names"_s, u"--socket"_s,
                  m_folder + u"/socket"_s, u"--user=root"_s, u"--default-character-set=utf8mb4"_s});
    client.write(statements.toUtf8());
    client.closeWriteChannel();
    client.waitForFinished(kMillisecondsToJoin);
    EXPECT_EQ(client.exitCode(), 0) << client.readAllStandardError().toStdString();
    return QString::fromUtf8(client.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
}

QString DatabaseServer::log() {
    QFile file(m_folder + u"/server.log"_s);
    const bool isThere = file.open(QIODevice::ReadOnly);
    const QStringList lines = QString::fromUtf8(isThere ? file.readAll() : QByteArray()).split(u'\n');
    return ServerProcess::log() + lines.filter(u"[ERROR]"_s).join(u'\n');
}

void DatabaseServer::setNode(int port, const QStringList& peers) {
    m_nodePort = port;
    m_peers = peers;
}

QString DatabaseServer::program() const {
    return QStringLiteral(TAVOLINO_SOURCE_DIR "/tools/test-server");
}

QStringList DatabaseServer::arguments() const {
    QStringList arguments{m_folder, u"--port"_s, QString::number(port())};
    if (!m_tls.isEmpty())
        arguments << u"--tls"_s << m_tls;
    if (m_nodePort > 0)
        arguments << u"--node"_s << QString::number(m_nodePort) << u"--peers"_s << m_peers.join(u',');
    return arguments << u"--"_s << m_options;
}

ServerDatabase::ServerDatabase(DatabaseServer& server) : m_server(server) {
    static int last = 0;
    m_name = u"tavolino_%1_%2"_s.arg(QCoreApplication::applicationPid()).arg(++last);
}

ServerDatabase::~ServerDatabase() {
    m_server.sql(u"DROP DATABASE IF EXISTS %1"_s.arg(m_name));
}

GaleraCluster::GaleraCluster() : m_folder(folderTemplate()) {
    for (size_t index = 0; index < kNodes; ++index) {
        m_ports[index] = freePort();
        m_nodes[index] = std::make_unique<DatabaseServer>();
        m_nodes[index]->shareCertificate(m_folder.filePath(u"tls"_s));
    }
    m_nodes[0]->setNode(m_ports[0], {});
    m_started = m_nodes[0]->start() && waitForSize(0, 1);
    for (int index = 1; index < kNodes; ++index)
        m_started = m_started && restart(index);
}

GaleraCluster::~GaleraCluster() {
    for (const auto& server : m_nodes)
        server->kill();
}

QString GaleraCluster::why() {
    return m_nodes[0]->log();
}

store::ConnectionString GaleraCluster::connection(const QString& database) const {
    store::ConnectionString parts = m_nodes[0]->connection(database);
    parts.servers.clear();
    for (const auto& server : m_nodes)
        parts.servers << server->address();
    return parts;
}

bool GaleraCluster::restart(int index) {
    QStringList peers;
    for (int other = 0; other < kNodes; ++other)
        if (other != index)
            peers << u"127.0.0.1:%1"_s.arg(m_ports[size_t(other)]);
    node(index).setNode(m_ports[size_t(index)], peers);
    return node(index).start() && waitForSize(index, 1);
}

bool GaleraCluster::waitForSize(int index, int size) {
    QElapsedTimer waiting;
    waiting.start();
    while (waiting.elapsed() < kMillisecondsToJoin) {
        const QStringList state =
            node(index).sql(u"SELECT VARIABLE_VALUE FROM information_schema.GLOBAL_STATUS WHERE "
                            "VARIABLE_NAME IN ('WSREP_LOCAL_STATE_COMMENT', 'WSREP_CLUSTER_SIZE') "
                            "ORDER BY VARIABLE_NAME"_s);
        if (state.size() == 2 && state[0].toInt() >= size && state[1] == u"Synced"_s)
            return true;
        QThread::msleep(50);
    }
    return false;
}

} // namespace test
