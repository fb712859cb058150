#include "StartTime.h"
#include "Measure.h"
#include "Quiet.h"
#include "platform/net/QtInternet.h"
#include "platform/report/CupsPrinters.h"
#include "platform/report/QtReports.h"
#include "shell/AppStyle.h"
#include "shell/Application.h"
#include "shell/GuardedApplication.h"
#include <QElapsedTimer>
#include <QProcess>
#include <cstdio>
#include <cstdlib>

namespace bench {

using namespace Qt::StringLiterals;

namespace {

constexpr int kPatience = 60'000;

/// Waits until the window has painted what it shows and nothing else is due.
void settle(QWidget& window) {
    QCoreApplication::processEvents();
    window.repaint();
    while (QCoreApplication::eventDispatcher()->processEvents(QEventLoop::AllEvents)) {
    }
}

void tell(const char* line) {
    std::puts(line);
    std::fflush(stdout);
}

double untilLine(QProcess& process, const QByteArray& line, const QElapsedTimer& clock) {
    while (process.canReadLine() || process.waitForReadyRead(kPatience))
        if (process.readLine().trimmed() == line)
            return double(clock.nsecsElapsed()) / 1e6;
    qFatal("The program does not start: %s", process.readAllStandardError().constData());
}

} // namespace

StartTime measureStart(const QString& folder, int times) {
    std::vector<double> windows;
    std::vector<double> screens;
    for (int i = 0; i < times; ++i) {
        QProcess process;
        QElapsedTimer clock;
        clock.start();
        process.start(QCoreApplication::applicationFilePath(), {u"--start"_s, folder});
        windows.push_back(untilLine(process, "window", clock));
        screens.push_back(untilLine(process, "order screen", clock));
        process.waitForFinished(kPatience);
    }
    return {median(windows), median(screens)};
}

int showProgram(int argc, char** argv, const QString& folder) {
    shell::GuardedApplication qt(argc, argv);
    shell::applyStyle(qt);
    QuietDialogs dialogs;
    QuietRegistry registry;
    platform::QtReports reports(dialogs);
    platform::CupsPrinters printers;
    platform::QtInternet internet({});
    shell::Application tavolino({.appPath = folder,
                                 .dialogs = dialogs,
                                 .registry = registry,
                                 .reports = reports,
                                 .printers = printers,
                                 .internet = internet,
                                 .exitProcess = [](int code) { std::_Exit(code); }});
    if (!tavolino.start())
        return EXIT_FAILURE;
    settle(tavolino.mainWindow());
    tell("window");
    tavolino.services().navigation.showScreen(u"frmAuftragswesenAuftragserfassung"_s);
    settle(tavolino.mainWindow());
    tell("order screen");
    tavolino.endProgram();
    return EXIT_SUCCESS;
}

} // namespace bench
