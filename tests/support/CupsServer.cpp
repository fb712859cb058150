#include "tests/support/CupsServer.h"
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QThread>
#include <cups/cups.h>
#ifdef Q_OS_LINUX
#include <csignal>
#include <sys/prctl.h>
#endif

using namespace Qt::StringLiterals;

namespace test {

namespace {

void writeFile(const QString& path, const QByteArray& text) {
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write(text);
}

/// Administration programs live in sbin, which is not in everyone's path.
QString program(const QString& name) {
    return QStandardPaths::findExecutable(name, {u"/usr/sbin"_s, u"/usr/bin"_s, u"/sbin"_s, u"/bin"_s});
}

QString output(const QString& name, const QStringList& arguments) {
    QProcess process;
    process.start(program(name), arguments);
    process.waitForFinished(20000);
    return QString::fromUtf8(process.readAllStandardOutput());
}

} // namespace

CupsServer::CupsServer() : m_formerServer(qgetenv("CUPS_SERVER")) {
    if (program(u"cupsd"_s).isEmpty()) {
        m_failure = u"cupsd is not installed"_s;
        return;
    }
    writeConfiguration();
    qputenv("CUPS_SERVER", path(u"socket"_s).toUtf8());
    // The variable is read once a thread; a second service in the same process needs to be told.
    cupsSetServer(path(u"socket"_s).toUtf8().constData());
    start();
}

CupsServer::~CupsServer() {
    m_service.terminate();
    if (!m_service.waitForFinished(5000)) {
        m_service.kill();
        m_service.waitForFinished(5000);
    }
    m_formerServer.isEmpty() ? qunsetenv("CUPS_SERVER") : qputenv("CUPS_SERVER", m_formerServer);
    cupsSetServer(m_formerServer.isEmpty() ? nullptr : m_formerServer.constData());
}

void CupsServer::writeConfiguration() {
    for (const char* folder : {"etc", "spool", "spool/tmp", "cache", "state", "log", "out"})
        QDir().mkpath(path(QString::fromLatin1(folder)));
    // The service starts its filters and backends as another user: they must reach the folder.
    QFile::setPermissions(m_folder.path(), QFile::Permissions::fromInt(0x7755));
    writeFile(path(u"etc/cupsd.conf"_s), "Listen " + path(u"socket"_s).toUtf8() + R"(
LogLevel warn
Browsing Off
WebInterface No
DefaultAuthType None
PreserveJobFiles No
PreserveJobHistory Yes
MaxJobTime 30
<Location />
  Order allow,deny
  Allow all
</Location>
<Policy default>
  <Limit All>
    Order deny,allow
    Allow all
  </Limit>
</Policy>
)");
    const QByteArray root = m_folder.path().toUtf8();
    writeFile(path(u"etc/cups-files.conf"_s),
              "FileDevice Yes\nServerRoot " + root + "/etc\nRequestRoot " + root + "/spool\nTempDir " + root +
                  "/spool/tmp\nCacheDir " + root + "/cache\nStateDir " + root + "/state\nAccessLog " + root +
                  "/log/access\nErrorLog " + root + "/log/error\nPageLog " + root + "/log/page\n");
}

void CupsServer::start() {
#ifdef Q_OS_LINUX
    // A test that crashes leaves no service behind.
    m_service.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
#endif
    m_service.start(program(u"cupsd"_s),
                    {u"-f"_s, u"-c"_s, path(u"etc/cupsd.conf"_s), u"-s"_s, path(u"etc/cups-files.conf"_s)});
    QElapsedTimer waiting;
    waiting.start();
    while (waiting.elapsed() < 10000 && m_service.state() != QProcess::NotRunning) {
        if (run(u"lpstat"_s, {u"-r"_s}).contains(u"is running"_s))
            return;
        QThread::msleep(10);
    }
    m_failure = u"cupsd did not start: "_s + QString::fromUtf8(m_service.readAllStandardError());
}

QString CupsServer::run(const QString& name, const QStringList& arguments) {
    return output(name, arguments);
}

void CupsServer::admin(const QString& name, const QStringList& arguments) {
    QProcess process;
    process.start(program(name), arguments);
    process.waitForFinished(20000);
    if (process.exitCode() != 0)
        m_failure = name + u": "_s + QString::fromUtf8(process.readAllStandardError());
}

void CupsServer::addQueue(const QString& name) {
    admin(u"lpadmin"_s, {u"-p"_s, name, u"-E"_s, u"-v"_s, u"file:"_s + path(u"out/"_s + name + u".pdf"_s),
                         u"-P"_s, QStringLiteral(TAVOLINO_SOURCE_DIR "/tests/support/printer.ppd")});
}

void CupsServer::pause(const QString& name) {
    admin(u"cupsdisable"_s, {name});
}

void CupsServer::resume(const QString& name) {
    admin(u"cupsenable"_s, {name});
}

void CupsServer::reject(const QString& name) {
    admin(u"cupsreject"_s, {name});
}

void CupsServer::accept(const QString& name) {
    admin(u"cupsaccept"_s, {name});
}

void CupsServer::denyUser(const QString& name) {
    admin(u"lpadmin"_s, {u"-p"_s, name, u"-u"_s, u"deny:"_s + QString::fromUtf8(cupsUser())});
}

void CupsServer::setDefault(const QString& name) {
    admin(u"lpadmin"_s, {u"-d"_s, name});
}

int CupsServer::finishedJobs(const QString& name) {
    return int(run(u"lpstat"_s, {u"-W"_s, u"completed"_s, u"-o"_s, name}).count(u'\n'));
}

QString CupsServer::waitForPdf(const QString& name, int jobs) {
    QElapsedTimer waiting;
    waiting.start();
    while (waiting.elapsed() < 10000) {
        if (finishedJobs(name) >= jobs)
            return path(u"out/"_s + name + u".pdf"_s);
        QThread::msleep(10);
    }
    return {};
}

QString pdfText(const QString& path) {
    return output(u"pdftotext"_s, {u"-raw"_s, u"-enc"_s, u"UTF-8"_s, path, u"-"_s});
}

PdfPages pdfPages(const QString& path) {
    const QString info = output(u"pdfinfo"_s, {path});
    static const QRegularExpression count(u"Pages:\\s+(\\d+)"_s);
    static const QRegularExpression size(u"Page size:\\s+([\\d.]+) x ([\\d.]+) pts"_s);
    const auto measures = size.match(info);
    return {count.match(info).captured(1).toInt(), measures.captured(1).toDouble(),
            measures.captured(2).toDouble()};
}

} // namespace test
