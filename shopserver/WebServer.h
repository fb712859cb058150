#pragma once
#include <QString>
#include <QStringList>
#include <httplib.h>
#include <memory>
#include <optional>

namespace shop {

struct Shop;

/// The shop over HTTP or HTTPS: pages and pictures for everybody, the scripts for the desk; told so, the
/// system's server as well. Requests are bounded; the log holds neither query nor body.
class WebServer {
  public:
    struct Options {
        QString address, certificate, key;
        int port = 0;      ///< 0 for a free one
        QStringList desks; ///< addresses that may call the desk's scripts
    };

    WebServer(Shop& shop, Options options);

    /// The port; nothing when it cannot be had or the certificate cannot be read.
    std::optional<int> bind();

    /// Until stop().
    void serve() { m_server->listen_after_bind(); }

    bool isServing() const { return m_server->is_running(); }

    void stop() { m_server->stop(); }

  private:
    using Handler = httplib::Server::Handler;

    std::string pattern(const QString& name) const;
    void addPages();
    void addPictures();
    void addDeskScripts();
    void addSystemScripts();
    void addPackages();
    void addDeskScript(const std::string& path, Handler handler);
    void takeOrder(const QByteArray& body, httplib::Response& response);
    bool isDesk(const httplib::Request& request) const;

    Shop& m_shop;
    Options m_options;
    std::unique_ptr<httplib::Server> m_server;
};

} // namespace shop
