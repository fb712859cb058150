#include "platform/net/Download.h"
#include "common/RunTimeError.h"
#include <QFileInfo>
#include <QStorageInfo>
#include <QUrl>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

constexpr int kFound = 200;
constexpr int kNotFound = 404;

} // namespace

Download::Download(QString certificate, const Limits& limits) :
    m_certificate(std::move(certificate)), m_limits(limits) {
    m_silence.setSingleShot(true);
    m_silence.setInterval(m_limits.millisecondsOfSilence);
    connect(&m_silence, &QTimer::timeout, this, [this] { end(problemOfSilence()); });
}

Download::~Download() {
    giveUp();
}

void Download::CopyURLToFile(const QString& address, const QString& file) {
    Q_ASSERT(!m_underway);
    m_underway = true;
    m_isMissing = false;
    m_problem = {};
    m_done = m_total = 0;
    m_file = file;
    m_part.setFileName(m_file + u".teil"_s);
    const QUrl url(address);
    if (!isWebAddress(url))
        return endLater(problemOfAddress());
    if (!openPart())
        return endLater(problemOfFile());
    m_reply = m_network.get(webRequest(url, m_certificate));
    m_reply->setReadBufferSize(kReadAhead);
    // Queued, since Qt would complain of a reply that is aborted by its own word.
    connect(m_reply, &QNetworkReply::metaDataChanged, this, &Download::readHead, Qt::QueuedConnection);
    connect(m_reply, &QNetworkReply::readyRead, this, &Download::take);
    connect(m_reply, &QNetworkReply::finished, this, &Download::finished);
    m_silence.start();
}

bool Download::openPart() {
    if (m_part.exists())
        m_part.remove();
    return m_part.open(QIODevice::WriteOnly | QIODevice::NewOnly,
                       QFileDevice::ReadOwner | QFileDevice::WriteOwner);
}

void Download::giveUp() {
    if (std::exchange(m_underway, false)) {
        drop();
        m_part.remove();
    }
}

/// What is not the file itself is not waited for.
void Download::readHead() {
    const int status = m_reply ? statusOf(*m_reply) : 0;
    if (status == 0)
        return;
    if (status >= 300 && status < 400)
        return end(problemOfRedirect());
    if (status != kFound) {
        m_isMissing = status == kNotFound;
        return end({status, tr("Der Server meldet den Fehler %1.").arg(status)});
    }
    if (isPacked(*m_reply))
        return end(problemOfUnreadable());
    m_total = m_reply->header(QNetworkRequest::ContentLengthHeader).toLongLong();
    if (m_total > m_limits.bytes)
        end(problemOfSize());
}

void Download::take() {
    // An error page is not for the file.
    if (statusOf(*m_reply) != kFound)
        return;
    m_silence.start();
    std::array<char, 64 * 1024> block{};
    qint64 size = 0;
    while (m_reply && (size = m_reply->read(block.data(), block.size())) > 0) {
        m_done += size;
        if (m_done > m_limits.bytes)
            return end(problemOfSize());
        if (m_part.write(block.data(), size) != size)
            return end(problemOfFile());
    }
    Q_EMIT progressed(m_done, m_total);
}

void Download::finished() {
    readHead();
    if (!m_reply)
        return;
    if (m_reply->error() != QNetworkReply::NoError)
        return end(problemOf(m_reply->error()));
    take();
    if (!m_reply)
        return;
    const bool isWhole = statusOf(*m_reply) == kFound && (m_total == 0 || m_done == m_total);
    end(isWhole ? putInPlace() : problemOf(QNetworkReply::RemoteHostClosedError));
}

WebProblem Download::putInPlace() {
    const bool isWritten = m_part.flush() && m_part.size() == m_done;
    m_part.close();
    if (isWritten && (!QFile::exists(m_file) || QFile::remove(m_file)) &&
        QFile::rename(m_part.fileName(), m_file))
        return {};
    return problemOfFile();
}

WebProblem Download::problemOfFile() const {
    const QFileInfo file(m_file);
    // Below 0 for a folder that is not there.
    const qint64 room = QStorageInfo(file.absolutePath()).bytesAvailable();
    const bool isFull = room >= 0 && room < kReadAhead;
    return {isFull ? common::kDiskFull : common::kNotWritable,
            isFull ? tr("Der Datenträger ist voll.")
                   : tr("Die Datei \"%1\" lässt sich nicht schreiben.").arg(file.fileName())};
}

void Download::endLater(const WebProblem& problem) {
    QTimer::singleShot(0, this, [this, problem] { end(problem); });
}

void Download::end(const WebProblem& problem) {
    if (!std::exchange(m_underway, false))
        return;
    drop();
    m_problem = problem;
    if (problem.number != 0)
        m_part.remove();
    Q_EMIT ended();
}

void Download::drop() {
    m_silence.stop();
    if (QNetworkReply* reply = std::exchange(m_reply, nullptr)) {
        reply->disconnect(this);
        reply->abort();
        reply->deleteLater();
    }
}

} // namespace platform
