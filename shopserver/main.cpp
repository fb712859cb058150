/// A web shop for one firm, the desk's counterpart on the web server; told so, the system's server for all
/// desks. Speaks German, for whoever runs it.
#include "shopserver/OrderJson.h"
#include "shopserver/Shop.h"
#include "shopserver/SystemFolder.h"
#include "shopserver/WebServer.h"
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QTextStream>
#include <csignal>
#include <thread>

using namespace Qt::StringLiterals;

namespace {

enum ExitCode { kDone = 0, kFailed = 1, kMisused = 2 };

struct Request {
    shop::Places places;
    shop::WebServer::Options server;
    QString orderFile;
    bool showConfirmations = false, showMessages = false;
    qint64 deleteMessages = 0;
};

Request readArguments(const QCoreApplication& program, QString& error) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"Der Online Shop eines Betriebs: zeigt den Katalog, den Tavolino überträgt, und nimmt Bestellungen an."_s);
    parser.addPositionalArgument(u"ordner"_s, u"Wurzel des FTP-Servers, auf den Tavolino überträgt."_s,
                                 u"<ordner>"_s);
    parser.addOptions(
        {{u"folder"_s, u"Ordner des Shops in dieser Wurzel und im Web, wie ShopOrdner in tavolino.ini."_s,
          u"name"_s},
         {u"data"_s, u"Ordner für Bestellungen und Katalog in Kraft; sonst <ordner>-data."_s, u"ordner"_s},
         {u"port"_s, u"Port; 0 wählt einen freien."_s, u"port"_s, u"8080"_s},
         {u"address"_s, u"Adresse, auf der der Shop erreichbar ist."_s, u"adresse"_s, u"127.0.0.1"_s},
         {u"certificate"_s, u"Zertifikat für https (PEM)."_s, u"datei"_s},
         {u"key"_s, u"Schlüssel des Zertifikats (PEM)."_s, u"datei"_s},
         {u"desks"_s, u"Adressen, von denen Tavolino abfragen darf, durch Komma getrennt."_s, u"adressen"_s,
          u"127.0.0.1,::1"_s},
         {u"add-order"_s, u"Eine Bestellung aus einer JSON-Datei aufnehmen, ihre Nummer zeigen und enden."_s,
          u"datei"_s},
         {u"confirmations"_s, u"Die Bestätigungen zeigen und enden."_s},
         {u"system"_s,
          u"Ordner mit Versionen, Paketen und Nachrichten für alle Installationen: auch Server des Systems sein."_s,
          u"ordner"_s},
         {u"messages"_s, u"Die Nachrichten der Installationen zeigen und enden."_s},
         {u"delete-messages"_s, u"Diese Nachrichten bis und mit der Nummer löschen und enden."_s,
          u"nummer"_s}});
    const QCommandLineOption help = parser.addHelpOption();
    Request request;
    if (!parser.parse(program.arguments())) {
        error = parser.errorText();
        return request;
    }
    if (parser.isSet(help))
        parser.showHelp(kDone);
    bool isPort = false;
    request.server = {parser.value(u"address"_s), parser.value(u"certificate"_s), parser.value(u"key"_s),
                      int(parser.value(u"port"_s).toUShort(&isPort)),
                      parser.value(u"desks"_s).split(u',', Qt::SkipEmptyParts)};
    if (parser.positionalArguments().size() != 1 || !QDir(parser.positionalArguments().value(0)).exists()) {
        error = u"Geben Sie genau einen bestehenden Ordner an (Hilfe: --help)."_s;
        return request;
    }
    if (!isPort)
        error = u"Der Port muss eine Zahl zwischen 0 und 65535 sein."_s;
    if (request.server.certificate.isEmpty() != request.server.key.isEmpty())
        error = u"--certificate und --key gehören zusammen."_s;
    const QString root = QDir(parser.positionalArguments().first()).absolutePath();
    QString folder = QDir::cleanPath(u'/' + parser.value(u"folder"_s)).mid(1);
    if (!folder.isEmpty())
        folder += u'/';
    request.places = {root, folder, parser.isSet(u"data"_s) ? parser.value(u"data"_s) : root + u"-data"_s,
                      parser.value(u"system"_s)};
    request.orderFile = parser.value(u"add-order"_s);
    request.showConfirmations = parser.isSet(u"confirmations"_s);
    request.showMessages = parser.isSet(u"messages"_s);
    if (parser.isSet(u"delete-messages"_s)) {
        request.deleteMessages = parser.value(u"delete-messages"_s).toLongLong();
        if (request.deleteMessages < 1)
            error = u"--delete-messages braucht die Nummer einer Nachricht."_s;
    }
    return request;
}

int addOrder(shop::Shop& shop, const QString& path, QTextStream& out) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("Die Datei kann nicht gelesen werden.");
    out << shop.orders.add(shop::orderOfJson(file.readAll(), QDateTime::currentDateTime())) << Qt::endl;
    return kDone;
}

int showConfirmations(const shop::Shop& shop, QTextStream& out) {
    for (const shop::Confirmation& confirmation : shop.orders.confirmations())
        out << confirmation.moment << u" an "_s << confirmation.address << u": "_s << confirmation.subject
            << u'\n' << confirmation.text << u"\n\n"_s;
    return kDone;
}

int showMessages(const shop::Shop& shop, QTextStream& out) {
    for (shop::SentMessage message : shop.messages.sent())
        out << message.id << u"  "_s << message.moment << u" von "_s << message.sender << u":\n    "_s
            << message.text.replace(u"\n"_s, u"\n    "_s) << u"\n\n"_s;
    return kDone;
}

int deleteMessages(shop::Shop& shop, qint64 upTo) {
    shop.messages.removeUpTo(upTo);
    return kDone;
}

int serve(shop::Shop& shop, const Request& request, QTextStream& out, const sigset_t& endings) {
    if (!request.places.system.isEmpty())
        shop::SystemFolder(request.places.system).offer();
    shop::WebServer server(shop, request.server);
    const std::optional<int> port = server.bind();
    if (!port)
        throw std::runtime_error(
            "Die Adresse ist nicht zu haben, oder das Zertifikat kann nicht gelesen werden.");
    std::thread([&server, endings] {
        int signal = 0;
        sigwait(&endings, &signal);
        if (!server.isServing())
            std::_Exit(kDone);
        server.stop();
    }).detach();
    out << u"Online Shop: %1://%2:%3/%4Page_Order.asp"_s.arg(
               request.server.certificate.isEmpty() ? u"http"_s : u"https"_s, request.server.address,
               QString::number(*port), request.places.folder)
        << Qt::endl;
    server.serve();
    return kDone;
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication program(argc, argv);
    QTextStream out(stdout), errors(stderr);
    QString error;
    const Request request = readArguments(program, error);
    if (!error.isEmpty()) {
        errors << error << Qt::endl;
        return kMisused;
    }
    // Before any thread, so that only the one that waits for them gets them.
    sigset_t endings;
    sigemptyset(&endings);
    sigaddset(&endings, SIGTERM);
    sigaddset(&endings, SIGINT);
    pthread_sigmask(SIG_BLOCK, &endings, nullptr);
    try {
        shop::Shop shop(request.places);
        if (!request.orderFile.isEmpty())
            return addOrder(shop, request.orderFile, out);
        if (request.showConfirmations)
            return showConfirmations(shop, out);
        if (request.showMessages)
            return showMessages(shop, out);
        if (request.deleteMessages > 0)
            return deleteMessages(shop, request.deleteMessages);
        return serve(shop, request, out, endings);
    } catch (const std::exception& what) {
        errors << QString::fromUtf8(what.what()) << Qt::endl;
        return kFailed;
    }
}
