#include "support/LineSupport.h"
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTcpServer>
#include <QTest>
#include <QUdpSocket>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

LineWatcher::LineWatcher(std::unique_ptr<platform::BasicCAPI32> watched) : line(std::move(watched)) {
    QObject::connect(line.get(), &platform::BasicCAPI32::IncomingCall, line.get(),
                     [this](const QString& called, const QString& caller) {
                         calls.push_back({called, caller});
                     });
}

QStringList LineWatcher::callers() const {
    QStringList numbers;
    for (const auto& call : calls)
        numbers << call.caller;
    return numbers;
}

bool LineWatcher::waitForCalls(size_t count) const {
    return QTest::qWaitFor([&] { return calls.size() >= count; }, 10000);
}

int freePort() {
    // Below the ports that the system deals out by itself, and each program begins at a place of its own:
    // until it is taken nobody else gets it.
    constexpr int kFirst = 10'000;
    constexpr int kPorts = 20'000;
    static int last = int(QCoreApplication::applicationPid() * 37 % kPorts);
    for (;;) {
        last = (last + 1) % kPorts;
        const auto port = quint16(kFirst + last);
        QUdpSocket udp;
        QTcpServer tcp;
        if (udp.bind(QHostAddress::LocalHost, port, QUdpSocket::DontShareAddress) &&
            tcp.listen(QHostAddress::LocalHost, port))
            return port;
    }
}

namespace {

/// Without binding it, which would keep it from whoever is about to.
bool isTaken(int port) {
    QFile sockets(u"/proc/net/udp"_s);
    const QByteArray address = "0100007F:" + QByteArray::number(port, 16).rightJustified(4, '0').toUpper();
    return sockets.open(QIODevice::ReadOnly) && sockets.readAll().contains(address);
}

} // namespace

std::unique_ptr<Sipp> Sipp::caller(const QString& scenario, int port, const QStringList& options) {
    return std::unique_ptr<Sipp>(new Sipp(
        scenario, QStringList{u"127.0.0.1:%1"_s.arg(port), u"-p"_s, QString::number(freePort())} + options));
}

std::unique_ptr<Sipp> Sipp::registrar(const QString& scenario, int port) {
    auto sipp = std::unique_ptr<Sipp>(new Sipp(scenario, {u"-p"_s, QString::number(port)}));
    EXPECT_TRUE(QTest::qWaitFor([port] { return isTaken(port); }, 20000));
    return sipp;
}

Sipp::Sipp(const QString& scenario, const QStringList& options) {
    const auto file = QStringLiteral(TAVOLINO_SOURCE_DIR) + u"/tests/support/sip/"_s + scenario;
    m_process.setWorkingDirectory(m_folder.path());
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.setStandardOutputFile(QProcess::nullDevice());
    m_process.start(u"sipp"_s,
                    QStringList{u"-sf"_s, file, u"-m"_s, u"1"_s, u"-i"_s, u"127.0.0.1"_s, u"-nostdin"_s,
                                u"-timeout"_s, u"20s"_s, u"-timeout_error"_s, u"-trace_err"_s} +
                        options);
    m_process.waitForStarted();
}

Sipp::~Sipp() {
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.kill();
    m_process.waitForFinished();
}

bool Sipp::succeeds() {
    return QTest::qWaitFor([this] { return m_process.state() == QProcess::NotRunning; }, 25000) &&
           m_process.exitStatus() == QProcess::NormalExit && m_process.exitCode() == 0;
}

QString Sipp::errors() const {
    QString text = u"sipp ended with %1\n"_s.arg(m_process.exitCode());
    const QDir folder(m_folder.path());
    for (const auto& name : folder.entryList(QDir::Files)) {
        QFile file(folder.filePath(name));
        if (file.open(QIODevice::ReadOnly))
            text += QString::fromUtf8(file.readAll());
    }
    return text;
}
