#include "shopserver/Answer.h"
#include "shopserver/Shop.h"
#include "shopserver/SystemFolder.h"
#include "shopserver/WebServer.h"
#include <QFile>

using namespace Qt::StringLiterals;

namespace shop {
namespace {

constexpr char kSystem[] = "/rootTavolinoNet/System/";
constexpr qsizetype kMostOfInstallation = 100;

std::string script(const char* name) {
    return kSystem + std::string(name) + "\\.asp";
}

/// "" for one that cannot be any.
QString installationOf(const httplib::Request& request) {
    const QString name = QString::fromStdString(request.get_param_value("id1"));
    return name.size() <= kMostOfInstallation ? name : QString();
}

/// In pieces: a package may be larger than what the server should hold in memory for each that fetches it.
void stream(const QString& path, httplib::Response& response) {
    const auto file = std::make_shared<QFile>(path);
    if (!file->open(QIODevice::ReadOnly) || file->size() == 0)
        return answer(response, "Nicht gefunden.", kText, 404);
    response.set_content_provider(size_t(file->size()), "application/octet-stream",
                                  [file](size_t offset, size_t length, httplib::DataSink& sink) {
                                      char block[64 * 1024];
                                      const qint64 wanted = qint64(std::min(length, sizeof block));
                                      // Less than was promised ends the connection.
                                      if (!file->seek(qint64(offset)) || file->read(block, wanted) != wanted)
                                          return false;
                                      return sink.write(block, size_t(wanted));
                                  });
}

} // namespace

void WebServer::addPackages() {
    for (const char* package : {"Update.exe", "DBTavolinoPhone.exe"})
        for (const char* ending : {"", ".sig"}) {
            const QString name = QLatin1String(package) + QLatin1String(ending);
            const std::string path = kSystem + QString(name).replace(u'.', u"\\."_s).toStdString();
            m_server->Get(path, [this, name](const httplib::Request&, httplib::Response& response) {
                stream(SystemFolder(m_shop.places.system).file(name), response);
            });
        }
}

void WebServer::addSystemScripts() {
    addPackages();
    const SystemFolder folder(m_shop.places.system);
    m_server->Post(script("TavolinoNet_SoftwareVersion"),
                   [folder](const httplib::Request&, httplib::Response& response) {
                       answer(response, softwareAnswer(folder.offer()), kText);
                   });
    m_server->Post(script("TavolinoNet_PhoneBookVersion"),
                   [folder](const httplib::Request&, httplib::Response& response) {
                       answer(response, phoneBookAnswer(folder.offer()), kText);
                   });
    addDeskScript(script("TavolinoNet_Start"), [this, folder](const httplib::Request& request,
                                                              httplib::Response& response) {
        const QString name = installationOf(request);
        const SystemOffer offer = folder.offer();
        answer(response, startAnswer(offer, m_shop.messages.tell(name, folder.messages(name))), kText);
    });
    addDeskScript(script("TavolinoNet_NachrichtGelesen"),
                  [this](const httplib::Request& request, httplib::Response& response) {
                      m_shop.messages.markRead(installationOf(request));
                      answer(response, "OK", kText);
                  });
    addDeskScript(script("TavolinoNet_NachrichtSenden"),
                  [this](const httplib::Request& request, httplib::Response& response) {
                      const QString text = QString::fromStdString(request.get_param_value("Nachricht"));
                      const QString sender = QString::fromStdString(request.remote_addr);
                      if (text.trimmed().isEmpty())
                          return answer(response, "FEHLER: Die Nachricht ist leer.", kText, 400);
                      if (!m_shop.messages.add(sender, text))
                          return answer(response, "FEHLER: Kein Platz für weitere Nachrichten.", kText, 503);
                      answer(response, "OK", kText);
                  });
}

} // namespace shop
