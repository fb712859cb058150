#pragma once
#include "common/Convert.h"
#include "install/Installer.h"
#include "orders/frmAuftragswesenAuftragserfassung.h"
#include "platform/IniRegistryStore.h"
#include "platform/line/TelephoneLine.h"
#include "platform/report/CupsPrinters.h"
#include "platform/report/QtReports.h"
#include "shell/Application.h"
#include "support/CupsServer.h"
#include "support/Keys.h"
#include "support/TestDialogs.h"
#include "support/TestFirm.h"
#include "support/TestFirmServices.h"
#include <QTimer>
#include <gtest/gtest.h>

namespace test {

/// The whole program on the small firm: the real start sequence and the real screens, worked by keys. It can
/// be started again after its end, as the next day does.
class ProgramTest : public testing::Test {
  protected:
    void TearDown() override {
        program.reset();
        if (!ConnMain.IsOpen())
            store::OpenDatabases();
    }

    /// False when the start sequence ended the program. The program before it is gone by then.
    bool start(platform::Reports& reports, platform::Printers& printers) {
        program.reset();
        if (ConnMain.IsOpen())
            store::CloseDatabases();
        program = std::make_unique<shell::Application>(
            shell::Application::Ground{.appPath = folder,
                                       .dialogs = dialogs,
                                       .registry = registry,
                                       .reports = reports,
                                       .printers = printers,
                                       .internet = internet,
                                       .telephony = {line.get()},
                                       .exitProcess = [this](int code) { ended << code; },
                                       .procedures = procedures});
        const bool started = program->start();
        QApplication::setActiveWindow(&window());
        return started;
    }

    frmMDI& window() { return program->mainWindow(); }

    template <typename Widget> Widget* find(const char* name) {
        return window().template findChild<Widget*>(QLatin1String(name));
    }

    /// Null while it is not open.
    frmAuftragswesenAuftragserfassung* screen() {
        return qobject_cast<frmAuftragswesenAuftragserfassung*>(
            window().screens().open(QStringLiteral("frmAuftragswesenAuftragserfassung")));
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QWidget* focus = QApplication::focusWidget();
        QTest::keyClick(focus ? focus : &window(), key, modifiers);
    }

    /// Types and presses Enter.
    void key(const QString& text) {
        typeText(text);
        press(Qt::Key_Return);
    }

    /// Does `work` in the next modal dialog, which must be over by then: one that stays would hold the test.
    void inDialog(const std::function<void(QWidget& dialog)>& work) {
        auto* watch = new QTimer(&window());
        QObject::connect(watch, &QTimer::timeout, watch, [this, watch, work] {
            const QPointer<QWidget> dialog = QApplication::activeModalWidget();
            if (!dialog)
                return;
            watch->stop();
            watch->deleteLater();
            EXPECT_TRUE(QTest::qWaitForWindowActive(dialog));
            work(*dialog);
            if (dialog && dialog->isVisible()) {
                ADD_FAILURE() << dialog->objectName().toStdString() << " is still open";
                dialog->close();
            }
            // As a window manager does.
            QApplication::setActiveWindow(&window());
        });
        watch->start(1);
    }

    TestFirm firm;
    /// The installation that the program starts on.
    QString folder = firm.folder();
    TestDialogs dialogs;
    platform::IniRegistryStore registry{firm.folder() + QStringLiteral("/einstellungen.ini")};
    TestInternet internet;
    std::unique_ptr<platform::BasicCAPI32> line;
    frmMDI::Procedures procedures;
    std::unique_ptr<shell::Application> program;
    /// Exit codes that the program asked for.
    QList<int> ended;
};

/// The program on an installation with the report templates and a print service of its own, which has one
/// queue, "Kasse".
class PrintingProgramTest : public ProgramTest {
  protected:
    void SetUp() override {
        ASSERT_TRUE(printing.started()) << printing.failure().toStdString();
        printing.addQueue(QStringLiteral("Kasse"));
        // Adds what the installation lacks.
        install::installDatabases(folder, {.reportsFrom = QStringLiteral(TAVOLINO_SOURCE_DIR "/reports")});
    }

    bool start() { return ProgramTest::start(reports, printers); }

    /// The columns of a row, divided by blanks; amounts with two decimals.
    static std::string row(const QString& sql) {
        store::Recordset rows;
        rows.Open(sql, ConnMain, store::adOpenForwardOnly, store::adLockReadOnly);
        QStringList texts;
        for (const store::Column& column : rows.Columns()) {
            const common::Value value = rows.Fields(column.name).Value();
            texts << (value.isDouble() ? common::formatNumber(value.toDouble(), QStringLiteral("0.00"))
                                       : value.toText());
        }
        return texts.join(QLatin1Char(' ')).toStdString();
    }

    CupsServer printing;
    platform::QtReports reports{dialogs};
    platform::CupsPrinters printers;
};

} // namespace test
