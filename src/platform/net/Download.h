#pragma once
#include "platform/net/WebRequest.h"
#include <QFile>
#include <QNetworkAccessManager>
#include <QObject>
#include <QTimer>

namespace platform {

/// Fetches a file from a web server, one at a time, while the event loop runs. What arrives is kept beside
/// under the name with ".teil"; only the whole file gets its name, and nothing is left of any other.
class Download : public QObject {
    Q_OBJECT
  public:
    struct Limits {
        qint64 bytes = 512LL * 1024 * 1024;
        /// A line that carries nothing for so long is dead.
        int millisecondsOfSilence = 30'000;
    };

    /// `certificate` as in QtInet.
    Download(QString certificate, const Limits& limits);
    ~Download() override;

    /// Starts and returns at once; `ended` tells that it is over, never before this has returned.
    void CopyURLToFile(const QString& url, const QString& file);
    /// Ends at once; nothing more is told.
    void giveUp();

    bool isUnderway() const { return m_underway; }

    /// Why the last one failed; of the number 0 when it did not.
    const WebProblem& problem() const { return m_problem; }

    /// Whether something of the file arrived.
    bool hasBegun() const { return m_done > 0; }

    /// Whether the server answered that there is no such file.
    bool isMissing() const { return m_isMissing; }

  Q_SIGNALS:
    /// `total` is 0 while it is not known.
    void progressed(qint64 done, qint64 total);
    void ended();

  private:
    bool openPart();
    void readHead();
    void take();
    void finished();
    void end(const WebProblem& problem);
    void endLater(const WebProblem& problem);
    void drop();
    WebProblem putInPlace();
    WebProblem problemOfFile() const;

    const QString m_certificate;
    const Limits m_limits;
    QNetworkAccessManager m_network;
    QNetworkReply* m_reply = nullptr;
    QTimer m_silence;
    QString m_file;
    QFile m_part;
    qint64 m_done = 0;
    qint64 m_total = 0;
    bool m_underway = false;
    bool m_isMissing = false;
    WebProblem m_problem;
};

} // namespace platform
