#pragma once
#include "platform/net/Inet.h"
#include <QByteArray>
#include <QTimer>
#include <memory>

class QNetworkAccessManager;
class QNetworkReply;

namespace platform {

/// By http and https. An answer has to be there within 30 seconds and holds 16 MB at most. Its text is read
/// in the character set that its header tells, else in UTF-8, else, where it is none, in Windows-1252.
class QtInet : public Inet {
    Q_OBJECT
  public:
    struct Limits {
        qint64 bytes = 16LL * 1024 * 1024;
        int milliseconds = 30'000;
    };

    /// `certificate`: file of a certificate to trust beside the system's own, "" for none.
    explicit QtInet(QString certificate) : QtInet(std::move(certificate), Limits()) {}

    QtInet(QString certificate, const Limits& limits);
    ~QtInet() override;

    void Execute(const QString& url) override;

    bool StillExecuting() const override { return m_executing; }

    void Cancel() override;

    QString Answer() const override { return m_answer; }

    QString Problem() const override { return m_problem; }

    QString Refusal() const override { return m_refusal; }

  private:
    void take();
    void finished();
    void end(const QString& problem);

    QString m_certificate;
    const Limits m_limits;
    std::unique_ptr<QNetworkAccessManager> m_network;
    QNetworkReply* m_reply = nullptr;
    QTimer m_deadline;
    QByteArray m_bytes;
    QString m_answer, m_problem, m_refusal;
    bool m_executing = false;
};

/// The text of an answer; `contentType` as in "text/html; charset=windows-1252".
QString decodedAnswer(const QByteArray& bytes, const QString& contentType);

} // namespace platform
