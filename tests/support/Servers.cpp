#include "support/Servers.h"
#include "common/AtomicFile.h"
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <csignal>
#include <gtest/gtest.h>
#ifdef Q_OS_LINUX
#include <sys/prctl.h>
#endif

using namespace Qt::StringLiterals;

namespace test {
namespace {

constexpr int kMillisecondsToStart = 60'000;
constexpr int kLacking = 77; ///< what a server ends with where the machine lacks what it needs
constexpr int kMillisecondsToEnd = 5000;

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

bool ServerProcess::start() {
#ifdef Q_OS_LINUX
    m_process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
#endif
    m_process.start(program(), arguments());
    QElapsedTimer waiting;
    waiting.start();
    while (!m_process.canReadLine() && m_process.state() != QProcess::NotRunning &&
           waiting.elapsed() < kMillisecondsToStart)
        m_process.waitForReadyRead(100);
    // "40123", or an address that holds it.
    static const QRegularExpression number(u"(?:^|:)(\\d+)(?:$|/)"_s);
    const QString line = QString::fromUtf8(m_process.readLine()).trimmed();
    const int told = number.match(line).captured(1).toInt();
    if (told > 0)
        m_port = told;
    const bool isLacking = m_process.state() == QProcess::NotRunning && m_process.exitCode() == kLacking;
    EXPECT_TRUE(told > 0 || isLacking) << line.toStdString() << log().toStdString();
    return told > 0;
}

void ServerProcess::stop() {
    m_process.terminate();
    if (!m_process.waitForFinished(kMillisecondsToEnd))
        kill();
}

void ServerProcess::kill() {
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.kill();
    m_process.waitForFinished(kMillisecondsToEnd);
}

void ServerProcess::pause() {
    ::kill(pid_t(m_process.processId()), SIGSTOP);
}

void ServerProcess::resume() {
    ::kill(pid_t(m_process.processId()), SIGCONT);
}

QString ServerProcess::log() {
    m_log += QString::fromUtf8(m_process.readAllStandardError());
    return m_log;
}

Certificate::Certificate(const QString& names) {
    QProcess openssl;
    openssl.start(u"openssl"_s, {u"req"_s, u"-x509"_s, u"-newkey"_s, u"ec"_s, u"-pkeyopt"_s,
                                 u"ec_paramgen_curve:prime256v1"_s, u"-nodes"_s, u"-days"_s, u"2"_s,
                                 u"-subj"_s, u"/CN=127.0.0.1"_s, u"-addext"_s, u"subjectAltName="_s + names,
                                 u"-keyout"_s, key(), u"-out"_s, certificate()});
    openssl.waitForFinished(kMillisecondsToStart);
    EXPECT_EQ(openssl.exitCode(), 0) << openssl.readAllStandardError().toStdString();
    QFile file(both());
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(contentOf(certificate()) + contentOf(key()));
}

QString FtpServer::program() const {
    // The library is one of the system's packages, another Python in the path would not find it.
    return u"/usr/bin/python3"_s;
}

QStringList FtpServer::arguments() const {
    return {QStringLiteral(TAVOLINO_SOURCE_DIR "/tests/support/ftpserver.py"),
            m_folder,
            QString::number(port()),
            u"pizzeria"_s,
            kPassword.toString(),
            m_tls ? m_tls->both() : QString(),
            QString::number(m_quota)};
}

QString WebShop::program() const {
    return QStringLiteral(TAVOLINO_BINARY_DIR "/tavolino-shop");
}

QStringList WebShop::arguments() const {
    QStringList arguments{m_root, u"--folder"_s, kFolder.toString(), u"--port"_s, QString::number(port())};
    if (m_tls)
        arguments << u"--certificate"_s << m_tls->certificate() << u"--key"_s << m_tls->key();
    if (!m_system.isEmpty())
        arguments << u"--system"_s << m_system;
    return arguments;
}

QString WebShop::address() const {
    return u"%1://127.0.0.1:%2"_s.arg(m_tls ? u"https"_s : u"http"_s).arg(port());
}

QByteArray WebShop::run(const QStringList& options) {
    QProcess process;
    process.start(program(), QStringList{m_root, u"--folder"_s, kFolder.toString()} + options);
    process.waitForFinished(kMillisecondsToStart);
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    return process.readAllStandardOutput();
}

qint64 WebShop::addOrder(const QByteArray& json) {
    QTemporaryDir folder;
    QFile file(folder.filePath(u"order.json"_s));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(json);
    file.close();
    return run({u"--add-order"_s, file.fileName()}).trimmed().toLongLong();
}

QString WebShop::confirmations() {
    return QString::fromUtf8(run({u"--confirmations"_s}));
}

QString WebShop::sentMessages() {
    return QString::fromUtf8(run({u"--messages"_s}));
}

ShopServers::ShopServers(Tls tls) :
    m_tls(tls), ftp(m_folder.filePath(u"ftp"_s), tls == Tls::Yes ? &certificate : nullptr),
    web(m_folder.filePath(u"ftp"_s), tls == Tls::Yes ? &certificate : nullptr) {
    for (const QString& folder : {u"Pictures"_s, u"ProduktPics/Small"_s, u"ProduktPics/Large"_s})
        QDir().mkpath(file(folder));
    ftp.start();
    web.start();
}

platform::Endpoints ShopServers::endpoints() const {
    const bool isTls = m_tls == Tls::Yes;
    platform::Endpoints ends;
    ends.strFTPServer = u"127.0.0.1"_s;
    ends.lngFTPPort = ftp.port();
    ends.strFTPUser = u"pizzeria"_s;
    ends.strFTPPassword = FtpServer::kPassword.toString();
    ends.ftpTls = isTls;
    ends.strDomainMapping = web.address();
    ends.strWebShopPfad = WebShop::kFolder.toString();
    ends.systemHost = ends.strDomainMapping;
    if (isTls)
        ends.certificate = certificate.certificate();
    return ends;
}

SystemServer::SystemServer(const Certificate* tls) : m_tls(tls), web(m_folder.filePath(u"ftp"_s), tls) {
    for (const QString& folder : {u"ftp"_s, u"system/messages"_s})
        QDir().mkpath(m_folder.filePath(folder));
    web.setSystem(m_folder.filePath(u"system"_s));
    offer(u"1.0.0"_s, u"1.0.0"_s, QDate(2026, 11, 23), 202611);
}

void SystemServer::offer(const QString& version, const QString& mayRun, const QDate& until,
                         int phoneBook) const {
    put(u"system.json"_s, QJsonDocument(QJsonObject{{u"version"_s, version},
                                                    {u"mayRun"_s, mayRun},
                                                    {u"mayRunUntil"_s, until.toString(Qt::ISODate)},
                                                    {u"phoneBook"_s, phoneBook}})
                              .toJson());
}

void SystemServer::put(const QString& name, const QByteArray& content) const {
    common::writeFileAtomically(m_folder.filePath(u"system/"_s + name), content);
}

platform::Endpoints SystemServer::endpoints(const QString& installation) const {
    platform::Endpoints ends;
    ends.systemHost = web.address();
    ends.installation = installation;
    if (m_tls)
        ends.certificate = m_tls->certificate();
    return ends;
}

} // namespace test
