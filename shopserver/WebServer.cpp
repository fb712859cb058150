#include "shopserver/WebServer.h"
#include "shopserver/Answer.h"
#include "shopserver/DeskAnswer.h"
#include "shopserver/OrderPage.h"
#include "shopserver/Shop.h"
#include <QCryptographicHash>
#include <QFile>
#include <QHash>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QUrl>
#include <iostream>

using namespace Qt::StringLiterals;

namespace shop {
namespace {

constexpr size_t kMostBytesOfRequest = 256 * 1024;
constexpr qint64 kMostBytesOfPicture = 8 * 1024 * 1024;
constexpr qint64 kMostOpenOrders = 1000;
constexpr int kSeconds = 10;

QString newReceipt() {
    quint32 random[4];
    QRandomGenerator::system()->fillRange(random);
    return QString::fromLatin1(QByteArray(reinterpret_cast<const char*>(random), sizeof random).toHex());
}

/// The desk encodes these once more than the rest, and a line end as "<br />".
QString confirmationText(const httplib::Request& request, const char* name) {
    QString text = QString::fromStdString(request.get_param_value(name));
    for (const char16_t* code : {u"!21", u"\"22", u"#23", u"$24"})
        text.replace(u'%' + QString::fromUtf16(code + 1), QString(QChar(code[0])));
    return text.replace(u"<br />"_s, u"\n"_s);
}

void log(const httplib::Request& request, const httplib::Response& response) {
    std::string path = request.path.substr(0, 200);
    std::ranges::replace_if(
        path, [](unsigned char c) { return c < 0x20 || c == 0x7f; }, '?');
    std::clog << request.method << ' ' + path + ' ' + std::to_string(response.status) + '\n' << std::flush;
}

} // namespace

WebServer::WebServer(Shop& shop, Options options) : m_shop(shop), m_options(std::move(options)) {
    if (m_options.certificate.isEmpty())
        m_server = std::make_unique<httplib::Server>();
    else
        m_server = std::make_unique<httplib::SSLServer>(QFile::encodeName(m_options.certificate).constData(),
                                                        QFile::encodeName(m_options.key).constData());
    // The library's own choice lets a second server share the port, and each gets some of the requests.
    m_server->set_socket_options([](socket_t socket) {
        const int yes = 1;
        ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    });
    m_server->set_payload_max_length(kMostBytesOfRequest);
    m_server->set_read_timeout(kSeconds);
    m_server->set_write_timeout(kSeconds);
    m_server->set_default_headers(
        {{"X-Content-Type-Options", "nosniff"},
         {"Referrer-Policy", "no-referrer"},
         {"Content-Security-Policy", "default-src 'none'; img-src 'self'; style-src "
                                     "'unsafe-inline'; form-action 'self'"}});
    m_server->set_logger(log);
    m_server->set_exception_handler(
        [](const httplib::Request&, httplib::Response& response, std::exception_ptr error) {
            try {
                std::rethrow_exception(error);
            } catch (const std::exception& what) {
                std::clog << what.what() << std::endl;
            } catch (...) {
            }
            answer(response, "Fehler im Server.", kText, 500);
        });
    addPages();
    addPictures();
    addDeskScripts();
    if (!m_shop.places.system.isEmpty())
        addSystemScripts();
}

std::optional<int> WebServer::bind() {
    if (!m_server->is_valid())
        return {};
    const std::string address = m_options.address.toStdString();
    if (m_options.port == 0) {
        const int port = m_server->bind_to_any_port(address);
        return port > 0 ? std::optional(port) : std::nullopt;
    }
    return m_server->bind_to_port(address, m_options.port) ? std::optional(m_options.port) : std::nullopt;
}

std::string WebServer::pattern(const QString& name) const {
    return QRegularExpression::escape(u'/' + m_shop.places.folder + name).toStdString();
}

void WebServer::addPages() {
    const std::string page = pattern(u"Page_Order.asp"_s);
    m_server->Get(page, [this](const httplib::Request&, httplib::Response& response) {
        const auto catalogue = m_shop.catalogue.get();
        if (!catalogue)
            return answer(response, emptyPage(), kHtml, 503);
        answer(response, orderPage(*catalogue, {}, {}, QDateTime::currentDateTime(), newReceipt()));
    });
    m_server->Post(page, [this](const httplib::Request&, httplib::Response& response,
                                const httplib::ContentReader& read) {
        QByteArray body;
        const bool isWhole = read([&](const char* data, size_t size) {
            body.append(data, qsizetype(size));
            return size_t(body.size()) <= kMostBytesOfRequest;
        });
        if (isWhole)
            takeOrder(body, response);
    });
}

void WebServer::takeOrder(const QByteArray& body, httplib::Response& response) {
    const auto catalogue = m_shop.catalogue.get();
    if (!catalogue)
        return answer(response, emptyPage(), kHtml, 503);
    const QDateTime now = QDateTime::currentDateTime();
    const OrderForm form(body);
    QStringList problems;
    Order order = form.order(*catalogue, now, problems);
    const QString receipt = form.value(u"beleg"_s);
    // Sent twice is one order; gone back to and changed it is another.
    if (!receipt.isEmpty())
        order.receipt =
            QString::fromLatin1(QCryptographicHash::hash(body, QCryptographicHash::Sha256).toHex());
    if (m_shop.orders.count() >= kMostOpenOrders)
        problems << u"Im Moment können wir keine weiteren Bestellungen annehmen. Bitte rufen Sie uns an."_s;
    if (!problems.isEmpty())
        return answer(response,
                      orderPage(*catalogue, form, problems, now, receipt.isEmpty() ? newReceipt() : receipt),
                      kHtml, 422);
    answer(response, thanksPage(*catalogue, m_shop.orders.add(order)));
}

void WebServer::addPictures() {
    static const QHash<QString, const char*> types{{u"jpg"_s, "image/jpeg"},
                                                   {u"jpeg"_s, "image/jpeg"},
                                                   {u"png"_s, "image/png"},
                                                   {u"gif"_s, "image/gif"}};
    for (const QString& folder : {u"Pictures/"_s, u"ProduktPics/Small/"_s, u"ProduktPics/Large/"_s})
        m_server->Get(pattern(folder) + "([^/\\\\]+)",
                      [this, folder](const httplib::Request& request, httplib::Response& response) {
                          const QString name = QString::fromStdString(request.matches[1]);
                          const char* const type = types.value(name.section(u'.', -1).toLower());
                          QFile file(m_shop.places.file(folder + name));
                          if (!type || !file.open(QIODevice::ReadOnly) || file.size() > kMostBytesOfPicture)
                              return answer(response, "Nicht gefunden.", kText, 404);
                          answer(response, file.readAll(), type);
                      });
}

bool WebServer::isDesk(const httplib::Request& request) const {
    return m_options.desks.contains(QString::fromStdString(request.remote_addr));
}

void WebServer::addDeskScript(const std::string& path, Handler handler) {
    m_server->Post(path, [this, handler](const httplib::Request& request, httplib::Response& response) {
        if (!isDesk(request))
            return answer(response, "Nicht erlaubt.", kText, 403);
        handler(request, response);
    });
}

void WebServer::addDeskScripts() {
    const auto number = [](const httplib::Request& request) {
        return QString::fromStdString(request.get_param_value("ID")).toLongLong();
    };
    addDeskScript(pattern(u"TavolinoShopDataTransferAccessToSQL.asp"_s),
                  [this](const httplib::Request&, httplib::Response& response) {
                      try {
                          m_shop.catalogue.takeUpload();
                          answer(response, "OK", kText);
                      } catch (const std::exception& error) {
                          answer(response, QByteArray("FEHLER: ") + error.what(), kText, 500);
                      }
                  });
    addDeskScript(pattern(u"WebShopBestellungen_Master.asp"_s),
                  [this](const httplib::Request&, httplib::Response& response) {
                      answer(response, headsAnswer(m_shop.orders.orders()), kText);
                  });
    addDeskScript(pattern(u"WebShopBestellungen_Details.asp"_s),
                  [this, number](const httplib::Request& request, httplib::Response& response) {
                      answer(response, linesAnswer(m_shop.orders.lines(number(request))), kText);
                  });
    addDeskScript(pattern(u"WebShopBestellungen_Delete.asp"_s),
                  [this, number](const httplib::Request& request, httplib::Response& response) {
                      m_shop.orders.remove(number(request));
                      answer(response, "OK", kText);
                  });
    addDeskScript("/rootTavolinoNet/System/TavolinoNet_EMailConfo\\.asp",
                  [this](const httplib::Request& request, httplib::Response& response) {
                      m_shop.orders.addConfirmation({QDateTime::currentDateTime().toString(Qt::ISODate),
                                                     confirmationText(request, "id1"),
                                                     confirmationText(request, "id2"),
                                                     confirmationText(request, "id3")});
                      answer(response, "OK", kText);
                  });
}

} // namespace shop
