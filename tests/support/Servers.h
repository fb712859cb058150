#pragma once
#include "platform/net/Endpoints.h"
#include <QDate>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace test {

/// A server on the loopback in a process of its own, on a free port that it keeps over a restart. It ends
/// with this object, and with the test.
class ServerProcess {
  public:
    virtual ~ServerProcess() { kill(); }

    ServerProcess(const ServerProcess&) = delete;
    ServerProcess& operator=(const ServerProcess&) = delete;

    /// Listens when this returns; else why it does not is in log(). A failure of the test, unless the machine
    /// lacks what the server is made of.
    bool start();
    void stop(); ///< in good order
    void kill();
    /// It takes connections still, and is silent.
    void pause();
    void resume();

    int port() const { return m_port; }

    /// What it has said on its error output until now.
    virtual QString log();

  protected:
    ServerProcess() = default;

    void setPort(int port) { m_port = port; }

    virtual QString program() const = 0;
    virtual QStringList arguments() const = 0;

  private:
    QProcess m_process;
    QString m_log;
    int m_port = 0;
};

/// A certificate, for 127.0.0.1 and "localhost" unless told, that nobody trusts, made anew.
class Certificate {
  public:
    explicit Certificate(const QString& names = QStringLiteral("IP:127.0.0.1,DNS:localhost"));

    QString certificate() const { return m_folder.filePath(QStringLiteral("certificate.pem")); }

    QString key() const { return m_folder.filePath(QStringLiteral("key.pem")); }

    /// Both in one file.
    QString both() const { return m_folder.filePath(QStringLiteral("both.pem")); }

  private:
    QTemporaryDir m_folder;
};

/// A real FTP server. Its root is `folder`; the user is "pizzeria", the password kPassword.
class FtpServer : public ServerProcess {
  public:
    static constexpr QStringView kPassword = u"geheim; \"100%\"";

    explicit FtpServer(QString folder, const Certificate* tls = nullptr) :
        m_folder(std::move(folder)), m_tls(tls) {}

    void setQuota(qint64 bytes) { m_quota = bytes; } ///< from the next start on

  protected:
    QString program() const override;
    QStringList arguments() const override;

  private:
    QString m_folder;
    const Certificate* m_tls;
    qint64 m_quota = 0;
};

/// tavolino-shop, with `root` as the root of its FTP server.
class WebShop : public ServerProcess {
  public:
    explicit WebShop(QString root, const Certificate* tls = nullptr) : m_root(std::move(root)), m_tls(tls) {}

    /// From "http" up to the port.
    QString address() const;
    /// As shopserver/OrderJson.h reads it; its number, 0 when it was refused.
    qint64 addOrder(const QByteArray& json);
    /// What the desk has confirmed, as the shop's operator sees it.
    QString confirmations();
    /// What installations have written, as the system's administrator sees it.
    QString sentMessages();

    /// From the next start on it is the system's server too, with what that folder offers
    /// (shopserver/SystemFolder.h).
    void setSystem(QString folder) { m_system = std::move(folder); }

    static constexpr QStringView kFolder = u"kunden/pizzeria/";

  protected:
    QString program() const override;
    QStringList arguments() const override;

  private:
    QByteArray run(const QStringList& options);

    QString m_root, m_system;
    const Certificate* m_tls;
};

/// Both servers of a shop over one folder, started, and the end points that lead there.
class ShopServers {
  public:
    enum class Tls { No, Yes };

    explicit ShopServers(Tls tls = Tls::No);

    platform::Endpoints endpoints() const;

    /// A file in the shop's folder.
    QString file(const QString& name) const {
        return m_folder.filePath(QStringLiteral("ftp/") + WebShop::kFolder.toString() + name);
    }

    const Certificate certificate;

  private:
    QTemporaryDir m_folder;
    Tls m_tls;

  public:
    FtpServer ftp;
    WebShop web;
};

/// The system's server over a folder of its own. Without a call of start() it stands still.
class SystemServer {
  public:
    explicit SystemServer(const Certificate* tls = nullptr);

    /// Versions as "1.0.5".
    void offer(const QString& version, const QString& mayRun, const QDate& until, int phoneBook) const;
    /// A package, its signature, `message.txt` for all or `messages/<installation>.txt`.
    void put(const QString& name, const QByteArray& content) const;

    bool start() { return web.start(); }

    platform::Endpoints endpoints(const QString& installation) const;

  private:
    QTemporaryDir m_folder;
    const Certificate* m_tls;

  public:
    WebShop web;
};

} // namespace test
