#include "platform/net/QtInet.h"
#include "platform/net/WebRequest.h"
#include <QIODevice>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QStringDecoder>
#include <QUrl>
#include <utility>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

/// Windows-1252 differs from Latin-1 in these; what it leaves open stays the control character.
constexpr char16_t kFrom80[] = u"€\x81‚ƒ„…†‡ˆ‰Š‹Œ\x8dŽ\x8f\x90‘’“”•–—˜™š›œ\x9džŸ";

QString fromWindows1252(const QByteArray& bytes) {
    QString text = QString::fromLatin1(bytes);
    for (QChar& c : text)
        if (c.unicode() >= 0x80 && c.unicode() < 0xa0)
            c = kFrom80[c.unicode() - 0x80];
    return text;
}

QString charsetOf(const QString& contentType) {
    for (const QString& parameter : contentType.split(u';')) {
        const QString name = parameter.section(u'=', 0, 0).trimmed();
        if (name.compare("charset"_L1, Qt::CaseInsensitive) == 0)
            return parameter.section(u'=', 1).trimmed().remove(u'"').toLower();
    }
    return {};
}

/// Whether the server answered, be it by an error page.
bool isAnswered(const QNetworkReply& reply) {
    const auto error = int(reply.error());
    const bool errorPage = (error >= 200 && error < 300) || (error >= 400 && error < 500);
    return error == QNetworkReply::NoError || (errorPage && statusOf(reply) >= 400);
}

/// An empty body that is sent once. Without one Qt repeats a request up to three times when the server hangs
/// up, which may have done by then what it was asked for.
class SentOnce : public QIODevice {
  public:
    explicit SentOnce() { open(ReadOnly); }

    qint64 size() const override { return 0; }

    bool reset() override { return false; }

  protected:
    qint64 readData(char*, qint64) override { return -1; }

    qint64 writeData(const char*, qint64) override { return -1; }
};

} // namespace

QString decodedAnswer(const QByteArray& bytes, const QString& contentType) {
    const QString charset = charsetOf(contentType);
    if (charset == u"windows-1252" || charset == u"iso-8859-1")
        return fromWindows1252(bytes);
    QStringDecoder told(charset.isEmpty() ? "UTF-8" : charset.toLatin1().constData());
    if (!told.isValid())
        told = QStringDecoder(QStringDecoder::Utf8);
    const QString text = told(bytes);
    return told.hasError() ? fromWindows1252(bytes) : text;
}

QtInet::QtInet(QString certificate, const Limits& limits) :
    m_certificate(std::move(certificate)), m_limits(limits) {
    m_deadline.setSingleShot(true);
    m_deadline.setInterval(m_limits.milliseconds);
    connect(&m_deadline, &QTimer::timeout, this, [this] { end(problemOfSilence().sentence); });
}

QtInet::~QtInet() {
    if (m_reply)
        m_reply->disconnect(this);
}

void QtInet::Execute(const QString& address) {
    Q_ASSERT(!m_executing);
    m_executing = true;
    m_answer.clear();
    m_problem.clear();
    m_refusal.clear();
    m_bytes.clear();
    Q_EMIT StateChanged(icRequesting);
    const QUrl url(address);
    if (!isWebAddress(url)) {
        QTimer::singleShot(0, this, [this] { end(problemOfAddress().sentence); });
        return;
    }
    if (!m_network)
        m_network = std::make_unique<QNetworkAccessManager>();
    QNetworkRequest request = webRequest(url, m_certificate);
    request.setHeader(QNetworkRequest::ContentTypeHeader, "application/x-www-form-urlencoded");
    // A connection that lasted may be about to end.
    m_network->clearConnectionCache();
    auto* const body = new SentOnce;
    m_reply = m_network->post(request, body);
    body->setParent(m_reply);
    // Qt reads in a thread of its own, and without a bound all that a server has.
    m_reply->setReadBufferSize(kReadAhead);
    connect(m_reply, &QNetworkReply::readyRead, this, &QtInet::take);
    connect(m_reply, &QNetworkReply::finished, this, &QtInet::finished);
    m_deadline.start();
}

void QtInet::Cancel() {
    if (m_executing)
        end(tr("Die Anfrage wurde abgebrochen."));
}

void QtInet::take() {
    m_bytes += m_reply->readAll();
    if (m_bytes.size() > m_limits.bytes)
        end(problemOfSize().sentence);
}

void QtInet::finished() {
    const int status = statusOf(*m_reply);
    if (status >= 300 && status < 400)
        return end(problemOfRedirect().sentence);
    if (isAnswered(*m_reply)) {
        take();
        if (!m_reply)
            return;
        if (isPacked(*m_reply))
            return end(problemOfUnreadable().sentence);
        if (status >= 400)
            m_refusal = tr("Der Server meldet den Fehler %1.").arg(status);
        m_answer = decodedAnswer(m_bytes, m_reply->header(QNetworkRequest::ContentTypeHeader).toString());
        return end({});
    }
    end(problemOf(m_reply->error()).sentence);
}

void QtInet::end(const QString& problem) {
    if (!m_executing)
        return;
    m_deadline.stop();
    m_executing = false;
    m_problem = problem;
    m_bytes.clear();
    if (QNetworkReply* reply = std::exchange(m_reply, nullptr)) {
        reply->disconnect(this);
        reply->abort();
        reply->deleteLater();
    }
    Q_EMIT StateChanged(problem.isEmpty() ? icResponseCompleted : icError);
}

} // namespace platform
