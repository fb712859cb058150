#pragma once
#include "platform/net/Download.h"
#include "platform/net/Internet.h"
#include <QThread>
#include <atomic>
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

inline const QString kProgramPackage = QStringLiteral("Update.exe");
inline const QString kPhoneBookPackage = QStringLiteral("DBTavolinoPhone.exe");

/// Fetches a package and its signature. Until the signature holds, the package has another name; nothing of
/// it stays, by the end of this object, unless it is taken.
class PackageFetch : public QObject {
    Q_OBJECT
  public:
    PackageFetch(Package package, const platform::Endpoints& server, QByteArray publicKey);
    ~PackageFetch() override;

    /// `ended` tells that it is over.
    void start();

    /// The package, which is the caller's from now on.
    QString take();

    /// Removes what a program that ended meanwhile left of the packages.
    static void removeLeftovers();

    /// Why there is no file that may be started, a text for the user; "" when there is.
    const QString& problem() const { return m_problem; }

  Q_SIGNALS:
    void progressed(qint64 done, qint64 total);
    /// All has arrived, and is looked at.
    void checking();
    void ended();

  private:
    void fetchSignature();
    void readSignature();
    void check(const QByteArray& signature);
    void checked(const std::optional<QString>& version);
    void putInPlace();
    void refuse(const QString& why);
    void end(const QString& problem);
    /// Runs the answer's work; an error in it ends the fetching.
    void answered(const std::function<void()>& work);
    QString file() const;
    QString unverifiedFile() const;
    QString signatureFile() const;

    const Package m_package;
    const platform::Endpoints& m_server;
    const QByteArray m_publicKey;
    platform::Download m_download;
    platform::Download m_signature;
    std::unique_ptr<QThread> m_check;
    const std::shared_ptr<std::atomic<bool>> m_givenUp = std::make_shared<std::atomic<bool>>(false);
    QString m_problem;
    bool m_isTaken = false;
};

} // namespace maintenance
