/// Creates what an installation of Tavolino lacks; see install/Installer.h. Speaks German, for the firm's
/// owner.
#include "common/RunTimeError.h"
#include "install/HiddenLine.h"
#include "install/Installer.h"
#include "install/Moving.h"
#include "install/OwnerPassword.h"
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QTextStream>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

enum ExitCode { kDone = 0, kFailed = 1, kMisused = 2 };

struct Request {
    QString folder;
    install::InstallOptions options;
    std::optional<install::MoveTo> moveTo;
    bool ownerPassword = false;
};

/// What is asked for, or why it cannot be: then `error` is set.
Request readArguments(const QCoreApplication& program, QString& error) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"Legt die Ordner und Datenbanken von Tavolino an, auf dem Server, wenn tavolino.ini es sagt. Was besteht, wird nie verändert."_s);
    parser.addPositionalArgument(u"ordner"_s, u"Ordner des Programms."_s, u"<ordner>"_s);
    parser.addOption({u"demo"_s, u"Neue Datenbanken mit einer erfundenen Firma füllen."_s});
    parser.addOption({u"large"_s,
                      u"Neue Datenbanken für Messungen füllen; 1 entspricht 200'000 Kunden und "
                      u"1'000'000 Bestellungen."_s,
                      u"faktor"_s});
    parser.addOption(
        {u"reports"_s, u"Ordner, aus dem fehlende Berichtsvorlagen kopiert werden."_s, u"ordner"_s});
    parser.addOption({u"owner-password"_s,
                      u"Das Passwort des Inhabers setzen; es wird von der Standardeingabe gelesen."_s});
    parser.addOption(
        {u"umziehen"_s,
         u"Die Daten der Installation auf den Server kopieren, den tavolino.ini nennt (server), "
         u"oder von dort in neue Dateien (datei). Schliessen Sie vorher Tavolino an allen Stationen."_s,
         u"server|datei"_s});
    const QCommandLineOption help = parser.addHelpOption();
    Request request;
    if (!parser.parse(program.arguments())) {
        error = parser.errorText();
        return request;
    }
    if (parser.isSet(help))
        parser.showHelp(kDone);
    if (parser.positionalArguments().size() != 1)
        error = u"Geben Sie genau einen Ordner an (Hilfe: --help)."_s;
    else
        request.folder = QDir(parser.positionalArguments().first()).absolutePath();
    bool number = true;
    request.ownerPassword = parser.isSet(u"owner-password"_s);
    request.options.demo = parser.isSet(u"demo"_s);
    if (parser.isSet(u"large"_s))
        request.options.large = parser.value(u"large"_s).toDouble(&number);
    if (!number || request.options.large < 0 || request.options.large > 10)
        error = u"Der Faktor hinter --large muss eine Zahl zwischen 0 und 10 sein."_s;
    if (request.options.demo && request.options.large > 0)
        error = u"--demo und --large schliessen einander aus."_s;
    const QString moveTo = parser.value(u"umziehen"_s);
    if (parser.isSet(u"umziehen"_s) && moveTo != u"server" && moveTo != u"datei")
        error = u"Hinter --umziehen steht server oder datei."_s;
    else if (parser.isSet(u"umziehen"_s))
        request.moveTo = moveTo == u"server" ? install::MoveTo::Server : install::MoveTo::Files;
    request.options.reportsFrom = parser.value(u"reports"_s);
    return request;
}

void move(const Request& request, QTextStream& out) {
    int shown = 0;
    const auto progress = [&](qint64 done, qint64 total) {
        constexpr int kStep = 10;
        const int now = total > 0 ? int(done * 100 / total) / kStep * kStep : 0;
        if (now != shown && now > 0)
            out << now << u" %"_s << Qt::endl;
        shown = now;
    };
    for (const QString& line : install::moveInstallation(request.folder, *request.moveTo, progress))
        out << line << Qt::endl;
}

void setOwnerPassword(const Request& request, QTextStream& out) {
    if (request.ownerPassword) {
        out << u"Passwort des Inhabers: "_s << Qt::flush;
        install::setOwnerPassword(request.folder, install::readHiddenLine());
        out << u"gesetzt."_s << Qt::endl;
    } else if (!install::hasOwnerPassword(request.folder)) {
        const QString password = install::randomPassword();
        install::setOwnerPassword(request.folder, password);
        out << u"Passwort des Inhabers, das nur dieses eine Mal gezeigt wird: "_s << password << Qt::endl;
    }
}

void setUp(const Request& request, QTextStream& out) {
    for (const QString& line : install::installDatabases(request.folder, request.options))
        out << line << Qt::endl;
    setOwnerPassword(request, out);
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication program(argc, argv);
    QTextStream out(stdout);
    QTextStream complaints(stderr);
    QString error;
    const Request request = readArguments(program, error);
    if (!error.isEmpty()) {
        complaints << error << Qt::endl;
        return kMisused;
    }
    QElapsedTimer timer;
    timer.start();
    try {
        if (request.moveTo)
            move(request, out);
        else
            setUp(request, out);
    } catch (const common::RunTimeError& failure) {
        complaints << failure.sentence() << Qt::endl << failure.detail() << Qt::endl;
        return kFailed;
    }
    out << u"Bereit in %1 s: "_s.arg(double(timer.elapsed()) / 1000, 0, 'f', 1)
        << QDir::toNativeSeparators(request.folder) << Qt::endl;
    return kDone;
}
