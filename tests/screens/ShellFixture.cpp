#include "tests/screens/ShellFixture.h"
#include "install/Installer.h"
#include "store/SystemSettings.h"
#include <QDir>
#include <QFile>

namespace test {

namespace {

/// Made once for all tests, since the installation takes its time.
const QString& freshInstallation() {
    static const QTemporaryDir folder;
    static const QString path = [] {
        install::installDatabases(folder.path());
        return folder.path();
    }();
    return path;
}

} // namespace

ShellTest::ShellTest() {
    // The guide would stand before the screens that a test opens.
    registry.values.insert(QStringLiteral("TavolinoHelp/StepByStep/ID"), QStringLiteral("0"));
    QDir(folder.path()).mkdir(QStringLiteral("Data"));
    const QDir data(freshInstallation() + QStringLiteral("/Data"));
    for (const QString& name : data.entryList(QDir::Files))
        QFile::copy(data.filePath(name), folder.filePath(QStringLiteral("Data/") + name));
}

ShellTest::~ShellTest() {
    app.reset();
    for (qint16* right : {&UserAdministrator, &UserEinstellungen, &UserKundenStatistik, &UserUmsatzStatistik,
                          &UserBuchungsjournal, &UserOnlineShop, &UserDatensicherung})
        *right = 0;
}

shell::Application& ShellTest::build() {
    app.reset();
    app = std::make_unique<shell::Application>(
        shell::Application::Ground{.appPath = folder.path(),
                                   .dialogs = dialogs,
                                   .registry = registry,
                                   .reports = reports,
                                   .printers = printers,
                                   .internet = internet,
                                   .telephony = {&line, keptCalls, iniProblem},
                                   .exitProcess = [this](int code) { ended.append(code); },
                                   .procedures = procedures});
    if (withFakeDesk)
        app->screens().add(QStringLiteral("frmAuftragswesenAuftragserfassung"),
                           {.create = [this](QWidget* parent) { return new FakeDesk(asked, parent); }});
    return *app;
}

frmMDI& ShellTest::start() {
    build();
    EXPECT_TRUE(app->start());
    QApplication::setActiveWindow(&app->mainWindow());
    return app->mainWindow();
}

} // namespace test
