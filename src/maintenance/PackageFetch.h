#pragma once
#include "platform/net/Download.h"
#include "platform/net/Internet.h"
#include <QThread>
#include <functional>
#include <memory>

namespace maintenance {

/// What the updates stand on besides the services.
struct Publisher {
    /// Whoever it belongs to is trusted; empty trusts nobody.
    QByteArray publicKey{};
    /// Starts what was fetched as a program of its own.
    std::function<bool(const QString& file)> startProgram{};
};

/// A program from the system's server, which installs something newer than what is here.
struct Package {
    /// Its name on the server and in the folder "Internet".
    QString name;
    /// More bytes than that it cannot have.
    qint64 bytes = 0;
    /// Whether that version is above the one here; false for what is none.
    std::function<bool(const QString& version)> isNewer;
};

/// Fetches a package and its signature. What is not validly signed, or not newer, does not stay, nor what is
/// given up, by the end of this object.
class PackageFetch : public QObject {
    Q_OBJECT
  public:
    PackageFetch(Package package, const platform::Endpoints& server, QByteArray publicKey);
    ~PackageFetch() override;

    /// `ended` tells that it is over.
    void start();

    QString file() const;

    /// Why there is no file that may be started, a text for the user; "" when there is.
    const QString& problem() const { return m_problem; }

  Q_SIGNALS:
    void progressed(qint64 done, qint64 total);
    void ended();

  private:
    void fetchSignature();
    void readSignature();
    void check(const QByteArray& signature);
    void checked(const std::optional<QString>& version);
    void refuse(const QString& why);
    void end(const QString& problem);
    QString signatureFile() const;

    const Package m_package;
    const platform::Endpoints& m_server;
    const QByteArray m_publicKey;
    platform::Download m_download;
    platform::Download m_signature;
    std::unique_ptr<QThread> m_check;
    QString m_problem;
    bool m_isReady = false;
};

} // namespace maintenance
