// The screens of backup and restore, in the whole program.
#include "common/Clock.h"
#include "maintenance/CheckedCopy.h"
#include "maintenance/DailyCopy.h"
#include "maintenance/frmDatenBackup.h"
#include "maintenance/frmDatenRestore.h"
#include "maintenance/modDatenBackup.h"
#include "maintenance/modTagessicherung.h"
#include "orders/frmAuftragswesenAuftragserfassung.h"
#include "store/SystemSettings.h"
#include "tests/screens/ShellFixture.h"
#include <QCloseEvent>
#include <QComboBox>
#include <QDir>
#include <QProgressBar>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

class DatensicherungScreens : public test::ShellTest {
  protected:
    DatensicherungScreens() {
        UserDatensicherung = UserAdministrator = 1;
        start();
    }

    template <typename Screen> Screen* open(const char* name) {
        auto* screen = qobject_cast<Screen*>(app->mainWindow().screens().show(QLatin1String(name)));
        EXPECT_TRUE(screen);
        return screen;
    }

    void click(QWidget* screen, const char* button) {
        auto* found = screen->findChild<QPushButton*>(QLatin1String(button));
        ASSERT_TRUE(found && found->isEnabled());
        QTest::mouseClick(found, Qt::LeftButton);
    }

    static QString path(QWidget* screen) {
        return screen->findChild<QLineEdit*>(u"txt_BackupPfad"_s)->text();
    }

    /// What was said, "title: text".
    QStringList said() {
        QStringList all;
        for (const auto& one : std::exchange(dialogs.said, {}))
            all << one.title + u": "_s + one.text;
        return all;
    }

    void backUpTo(const QString& file) {
        auto* screen = open<frmDatenBackup>("frmDatenBackup");
        dialogs.savePath = file;
        click(screen, "cmdSaveFile");
        click(screen, "cmdBackup");
    }

    const QString backup = folder.filePath(u"Backup.mdb"_s);
};

/// Does not close before its work is over.
class Busy : public QWidget {
  public:
    using QWidget::QWidget;
    bool busy = true;

  protected:
    void closeEvent(QCloseEvent* event) override { event->setAccepted(!busy); }
};

TEST_F(DatensicherungScreens, ABackupIsMadeAndReadInAgainByAProgramThatIsStartedAgain) {
    auto* screen = open<frmDatenBackup>("frmDatenBackup");
    auto* bar = screen->findChild<QProgressBar*>(u"ProgressBar"_s);
    EXPECT_TRUE(bar->isHidden());
    click(screen, "cmdBackup");
    EXPECT_EQ(said(), QStringList{u"Zielpfad angeben: Sie müssen zuerst einen Zielpfad auswählen"_s});
    click(screen, "cmdSaveFile"); // cancelled
    EXPECT_EQ(path(screen), QString());
    EXPECT_EQ(dialogs.suggested.value(0), modDatenBackup::ProposedName() + u".mdb"_s);
    backUpTo(folder.filePath(u"Data/DBTavolino.mdb"_s));
    EXPECT_EQ(said().size(), 1);
    EXPECT_TRUE(ConnMain.IsOpen() && ended.isEmpty());
    app->mainWindow().screens().show(u"frmVerwaltungKuriere"_s);
    QTimer::singleShot(0, screen, [screen] {
        QTest::mouseClick(screen->findChild<QPushButton*>(u"cmdClose"_s), Qt::LeftButton);
    });
    backUpTo(backup);
    EXPECT_FALSE(screen->isHidden()) << "nobody hears the user meanwhile";
    EXPECT_EQ(
        said(),
        QStringList{u"Backup erstellt: Das Backup wurde erstellt. Das Programm wird jetzt geschlossen."_s});
    EXPECT_EQ(bar->value(), 100);
    EXPECT_FALSE(app->mainWindow().screens().open(u"frmVerwaltungKuriere"_s));
    EXPECT_FALSE(ConnMain.IsOpen());
    EXPECT_EQ(ended, QList<int>{0});

    start();
    ConnMain.Execute(u"DELETE FROM tbl_PLZ_Verzeichnis"_s);
    auto* restore = open<frmDatenRestore>("frmDatenRestore");
    EXPECT_FALSE(restore->findChild<QPushButton*>(u"cmdBackup"_s)->isEnabled());
    EXPECT_FALSE(restore->findChild<QComboBox*>(u"combo_Sicherungen"_s)->isEnabled());
    const QString phone = folder.filePath(u"Data/DB_PRINT_Tavolino.mdb"_s);
    for (const QString& file : {phone, backup}) {
        dialogs.answerFile(file);
        click(restore, "cmdLoadFile");
        EXPECT_EQ(path(restore), file);
        click(restore, "cmdBackup");
    }
    const QStringList told = said();
    ASSERT_EQ(told.size(), 2);
    EXPECT_TRUE(told[0].contains(u"mit denen Tavolino arbeitet"_s));
    EXPECT_EQ(told[1], u"Backup einlesen: Das Backup wurde eingelesen. Das Programm wird jetzt geschlossen.");
    EXPECT_EQ(ended, (QList<int>{0, 0}));
    start();
    EXPECT_NE(query(u"SELECT Count(*) AS N FROM tbl_PLZ_Verzeichnis"_s), u"0");
}

TEST_F(DatensicherungScreens, WhatFailsIsToldWithItsCause) {
    QFile foreign(backup);
    ASSERT_TRUE(foreign.open(QIODevice::WriteOnly));
    foreign.write(QByteArray(5000, 'x'));
    foreign.close();
    auto* restore = open<frmDatenRestore>("frmDatenRestore");
    dialogs.answerFile(backup);
    click(restore, "cmdLoadFile");
    click(restore, "cmdBackup");
    EXPECT_EQ(
        said(),
        QStringList{u"Backup laden - Daten einlesen...: Das Einlesen des Backup's ist fehlgeschlagen.\n"
                    u"Die Datei \"Backup.mdb\" ist keine Datenbank von Tavolino oder ist beschädigt."_s});
    EXPECT_TRUE(ConnMain.IsOpen() && ended.isEmpty());

    Busy* busy = nullptr;
    app->screens().add(u"busy"_s, {.create = [&](QWidget* parent) { return busy = new Busy(parent); }});
    app->mainWindow().screens().show(u"busy"_s);
    backUpTo(folder.filePath(u"Neu.mdb"_s));
    ASSERT_EQ(dialogs.said.size(), 1);
    EXPECT_TRUE(said()[0].contains(u"beendet noch seine Arbeit"_s));
    EXPECT_TRUE(ConnMain.IsOpen() && ended.isEmpty() && !QFile::exists(folder.filePath(u"Neu.mdb"_s)));
    busy->busy = false;

    QDir().mkpath(folder.filePath(u"Neu.mdb.unfertig/x"_s));
    backUpTo(folder.filePath(u"Neu.mdb"_s));
    EXPECT_TRUE(said().value(0).startsWith(
        u"Backup erstellen - Daten sichern...: Das Backup konnte nicht erstellt werden.\nDie Datei"_s));
    EXPECT_EQ(ended, QList<int>{0});
    EXPECT_EQ(maintenance::causeOf({common::kNotWritable, u"x"_s}, {folder.path()}), QString())
        << "refused rights";
}

TEST_F(DatensicherungScreens, TheOrderOnTheScreenIsOfferedByTheNextStart) {
    withFakeDesk = false;
    start();
    auto* desk = qobject_cast<frmAuftragswesenAuftragserfassung*>(
        app->mainWindow().screens().show(u"frmAuftragswesenAuftragserfassung"_s));
    ASSERT_TRUE(desk);
    desk->order().BestellungGrid.setCell(0, orders::Col::Kurzzeichen, u"10"_s);
    backUpTo(backup);
    EXPECT_EQ(ended, QList<int>{0});
    said();
    start();
    EXPECT_TRUE(said().value(0).contains(u"Ein angefangener Auftrag wurde gefunden"_s));
}

TEST_F(DatensicherungScreens, TheDaysCopyIsOfferedByItsDate) {
    auto& copies = app->mainWindow().dailyCopy();
    bool done = false;
    QObject::connect(&copies, &maintenance::DailyCopy::done, &copies, [&] { done = true; });
    const auto copy = [&] {
        done = false;
        copies.startLater(0ms);
        ASSERT_TRUE(QTest::qWaitFor([&] { return done; }, 20000));
    };
    common::clock::set(46157);
    const QString sicherungen = folder.filePath(u"Data/Sicherungen"_s);
    QFile blocking(sicherungen);
    ASSERT_TRUE(blocking.open(QIODevice::WriteOnly));
    for (int day = 0; day < 3; ++day) {
        common::clock::set(46157 + day);
        EXPECT_FALSE(label("MDIMeldung").contains(u"Tagessicherung"_s)) << day;
        copy();
        copy();
    }
    EXPECT_TRUE(label("MDIMeldung").startsWith(u"Seit 3 Tagen gelingt keine Tagessicherung: Der Ordner"_s));
    blocking.remove();
    copy();
    EXPECT_EQ(registry.values.value(u"TavolinoSettings/Tagessicherung/Fehlschlag"_s), u"0 -");
    common::clock::release();

    auto* restore = open<frmDatenRestore>("frmDatenRestore");
    auto* list = restore->findChild<QComboBox*>(u"combo_Sicherungen"_s);
    EXPECT_EQ(list->itemText(1), u"17.05.2026");
    list->setCurrentIndex(1);
    Q_EMIT list->activated(1);
    EXPECT_TRUE(path(restore).endsWith(u"Sicherungen/Tagessicherung_2026-05-17.mdb"_s));
    click(restore, "cmdBackup");
    EXPECT_EQ(ended, QList<int>{0});
    EXPECT_TRUE(said().value(0).contains(u"wurde eingelesen"_s));
}

} // namespace
