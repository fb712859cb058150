#include "platform/IniRegistryStore.h"
#include "platform/OperatingSystem.h"
#include "platform/QtDialogs.h"
#include "platform/line/LineFactory.h"
#include "platform/net/QtInternet.h"
#include "platform/report/CupsPrinters.h"
#include "platform/report/QtReports.h"
#include "platform/sound/Bell.h"
#include "shell/AppStyle.h"
#include "shell/Application.h"
#include "shell/GuardedApplication.h"
#include <cstdlib>

int main(int argc, char** argv) {
    shell::GuardedApplication qt(argc, argv);
    shell::applyStyle(qt);
    platform::QtDialogs dialogs;
    platform::IniRegistryStore registry;
    platform::QtReports reports(dialogs);
    platform::CupsPrinters printers;
    platform::Bell bell;
    const QString folder = QCoreApplication::applicationDirPath();
    const QString iniFile = folder + QStringLiteral("/tavolino.ini");
    const auto telephone = platform::LineSettings::read(iniFile);
    platform::QtInternet internet(platform::Endpoints::read(iniFile));
    const std::unique_ptr<platform::BasicCAPI32> line = platform::createLine(telephone);
    shell::Application tavolino(
        {.appPath = folder,
         .dialogs = dialogs,
         .registry = registry,
         .reports = reports,
         .printers = printers,
         .internet = internet,
         .telephony = {line.get(), telephone.keptCalls, telephone.problem},
         // At once means at once: nothing is unwound, everything that counts is closed.
         .exitProcess = [](int code) { std::_Exit(code); },
         .procedures = {.beep = [&bell] { bell.ring(); }},
         .publisher = {.publicKey = QByteArray::fromBase64(TAVOLINO_UPDATE_KEY),
                       .startProgram = platform::startProgram}});
    return tavolino.start() ? QApplication::exec() : EXIT_FAILURE;
}
