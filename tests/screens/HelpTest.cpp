// The guide, the manual at the chapter of the present screen, and what the program tells about itself.
#include "common/Version.h"
#include "maintenance/frmHandbuch.h"
#include "maintenance/frmHelpStepByStep.h"
#include "maintenance/frmSystemAbout.h"
#include "maintenance/modHelpStepByStep.h"
#include "platform/QtDialogs.h"
#include "store/CreateDatabase.h"
#include "store/SystemSettings.h"
#include "tests/screens/ScreenTest.h"
#include "tests/screens/ShellFixture.h"
#include <QClipboard>
#include <QScrollBar>
#include <QTextBrowser>

using namespace Qt::StringLiterals;

namespace {

const QString kGuide = u"frmHelpStepByStep"_s;
const QString kManual = u"frmHandbuch"_s;

/// The program on an installation with the manual.
class HelpTest : public test::ShellTest {
  protected:
    HelpTest() {
        QFile::link(QStringLiteral(TAVOLINO_SOURCE_DIR "/docs"), folder.filePath(u"docs"_s));
        registry.values.clear();
    }

    ~HelpTest() override { SysAnmeldungBenutzer = 0; }

    template <typename Screen> Screen* screen(const QString& name) {
        return qobject_cast<Screen*>(app->mainWindow().screens().open(name));
    }

    QTextBrowser* text(QWidget& manual) { return manual.findChild<QTextBrowser*>(u"txt_Handbuch"_s); }

    QString placeIn(QWidget& manual) { return text(manual)->textCursor().block().text(); }
};

} // namespace

TEST_F(HelpTest, TheGuideComesAtEachStartUntilItIsSwitchedOffAndLeavesTheKeysToCalls) {
    for (const bool wanted : {true, true, false}) {
        start();
        auto* guide = screen<frmHelpStepByStep>(kGuide);
        ASSERT_EQ(guide != nullptr, wanted);
        if (!wanted)
            continue;
        auto* tick = guide->findChild<QCheckBox*>(u"opt_StepByStep"_s);
        EXPECT_TRUE(tick->isChecked());
        tick->click();
        EXPECT_EQ(registry.values.value(u"TavolinoHelp/StepByStep/ID"_s), u"0"_s);
        if (std::exchange(asked, {}).isEmpty()) {
            tick->click();
            EXPECT_EQ(registry.values.value(u"TavolinoHelp/StepByStep/ID"_s), u"1"_s);
        }
        Q_EMIT line.IncomingCall(u"044"_s, u"0447654321"_s, u""_s);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F9);
        EXPECT_EQ(asked, QStringList{u"call 0447654321"_s});
    }
    app->mainWindow().menuAction(u"mnHilfeStepByStep"_s)->trigger();
    EXPECT_FALSE(screen<frmHelpStepByStep>(kGuide)->findChild<QCheckBox*>()->isChecked());
}

TEST_F(HelpTest, EachStepTellsShowsAndLeadsWhereTheUserMayGo) {
    frmMDI& window = start();
    auto* guide = screen<frmHelpStepByStep>(kGuide);
    auto* tabs = guide->findChild<QTabWidget*>(u"SSTab1"_s);
    ASSERT_EQ(tabs->count(), 9);
    const auto press = [&](const char* button) {
        guide->findChild<QPushButton*>(QLatin1String(button))->click();
    };
    press("cmdProdukte");
    EXPECT_FALSE(window.screens().open(u"frmProdukte"_s)) << "no product without a category, as in the menu";
    EXPECT_EQ(std::exchange(dialogs.said, {}).size(), 1);
    ConnMain.Execute(u"INSERT INTO tbl_Verwaltung_ProdukteKategorien (txt_ProduktGruppe) VALUES ('Pizza')"_s);

    const std::pair<const char*, QString> ways[] = {
        {"cmdBenutzerVerwaltung", u"frmEinstellungenBenutzer"_s},
        {"cmdKategorien", u"frmProdukteKategorien"_s},
        {"cmdProdukte", u"frmProdukte"_s},
        {"cmdExtras", u"frmProdukteExtras"_s},
        {"cmdKunden", u"frmVerwaltungKunden"_s},
        {"cmdKuriere", u"frmVerwaltungKuriere"_s},
        {"cmdSystemEinstellungen", u"frmEinstellungenSystem"_s},
        {"cmdAuftragserfassung", u"frmAuftragswesenAuftragserfassung"_s}};
    for (const bool mayAll : {false, true}) {
        SysAnmeldungBenutzer = mayAll ? 0 : 1;
        window.ApplyUserRights();
        QStringList opened;
        for (const auto& [button, screen] : ways) {
            window.screens().closeAllBut(kGuide);
            press(button);
            if (window.screens().open(screen))
                opened << screen;
            else
                EXPECT_TRUE(dialogs.last().text.startsWith(u"Dafür fehlt Ihnen das Recht."_s));
        }
        EXPECT_EQ(std::exchange(dialogs.said, {}).size(), mayAll ? 0 : 2);
        EXPECT_EQ(opened.size(), mayAll ? 8 : 6);
    }
    for (const modHelpStepByStep::Step& step : modHelpStepByStep::steps()) {
        EXPECT_EQ(tabs->widget(tabs->currentIndex())->findChild<QTextBrowser*>()->objectName(),
                  u"txt_Schritt_%1"_s.arg(tabs->currentIndex() + 1));
        EXPECT_TRUE(QFile::exists(folder.filePath(u"docs/bilder/"_s + step.picture)))
            << step.picture.toStdString();
        press("cmdWeiter");
    }
    EXPECT_EQ(tabs->currentIndex(), 8);
}

TEST_F(HelpTest, F1LeadsFromEveryScreenToAPlaceThatTheManualHas) {
    frmMDI& window = start();
    window.screens().closeAll();
    QTest::keyClick(&window, Qt::Key_F1);
    auto* manual = screen<frmHandbuch>(kManual);
    ASSERT_TRUE(manual);
    EXPECT_EQ(text(*manual)->verticalScrollBar()->value(), 0)
        << "nothing is open, so it begins at its beginning";
    for (const QString& name : app->screens().names()) {
        const auto place = modHandbuch::placeOf(name);
        ASSERT_TRUE(place) << name.toStdString();
        ASSERT_TRUE(manual->showPlace(*place)) << name.toStdString() << ' ' << place->chapter.toStdString();
        const QString found = modHandbuch::withoutNumber(placeIn(*manual));
        EXPECT_TRUE(found.startsWith(place->paragraph.isEmpty() ? place->chapter : place->paragraph))
            << name.toStdString() << ' ' << found.toStdString();
    }
    EXPECT_FALSE(manual->showPlace({u"Kein Kapitel"_s}));
    const QString left = placeIn(*manual);
    QTest::keyClick(text(*manual), Qt::Key_F1);
    EXPECT_EQ(placeIn(*manual), left) << "in the manual it leads nowhere";

    window.screens().show(u"frmVerwaltungKuriere"_s);
    QTest::keyClick(&window, Qt::Key_F1);
    EXPECT_EQ(screen<frmHandbuch>(kManual), manual) << "it is there already";
    EXPECT_TRUE(placeIn(*manual).startsWith(u"Verwaltung → Kurier"_s));
    QTest::keyClick(text(*manual), Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !screen<frmHandbuch>(kManual); }));
}

TEST_F(HelpTest, OverAModalDialogTheManualStandsInOneOfItsOwn) {
    frmMDI& window = start();
    QDialog box(&window);
    QStringList places;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
        QWidget* modal = QApplication::activeModalWidget();
        if (modal == &box)
            return places.isEmpty() ? QTest::keyClick(&box, Qt::Key_F1) : box.reject();
        auto* manual = modal->findChild<frmHandbuch*>();
        ASSERT_TRUE(manual);
        if (!manual->isVisible())
            return;
        QTest::keyClick(modal, Qt::Key_F1);
        EXPECT_EQ(QApplication::activeModalWidget(), modal);
        places << placeIn(*manual);
        manual->findChild<QPushButton*>(u"cmdClose"_s)->click();
    });
    window.screens().show(u"frmVerwaltungKunden"_s);
    watch.start(20);
    platform::execModal(box);
    ASSERT_EQ(places.size(), 1);
    EXPECT_EQ(modHandbuch::withoutNumber(places[0]), u"Kunden"_s)
        << "a box without a place: the screen below";
    EXPECT_FALSE(screen<frmHandbuch>(kManual));
}

TEST_F(HelpTest, WithoutTheManualItIsToldAlsoOverADialog) {
    ASSERT_TRUE(QFile::remove(folder.filePath(u"docs"_s)));
    QTest::keyClick(&start(), Qt::Key_F1);
    ASSERT_EQ(dialogs.said.size(), 1);
    EXPECT_TRUE(dialogs.last().text.contains(u"handbuch.md"_s));
    EXPECT_FALSE(screen<frmHandbuch>(kManual));
}

TEST_F(HelpTest, TheManualIsSearchedAndItsLinksLead) {
    frmMDI& window = start();
    window.screens().show(kManual);
    auto* manual = screen<frmHandbuch>(kManual);
    const auto hits = [&] { return manual->findChild<QLabel*>(u"lbl_Treffer"_s)->text(); };
    const QString whole = text(*manual)->toPlainText();
    const auto count = whole.count(u"kurier"_s, Qt::CaseInsensitive);
    ASSERT_GT(count, 3);
    QTest::keyClick(text(*manual), Qt::Key_F, Qt::ControlModifier);
    auto* field = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_TRUE(field);
    QTest::keyClicks(field, u"kurier"_s);
    EXPECT_EQ(hits(), u"1 von %1"_s.arg(count));
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(hits(), u"2 von %1"_s.arg(count));
    for (int back = 0; back < 2; ++back)
        QTest::keyClick(field, Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(hits(), u"%1 von %1"_s.arg(count)) << "before the first comes the last";
    EXPECT_EQ(text(*manual)->textCursor().position(),
              whole.lastIndexOf(u"kurier"_s, -1, Qt::CaseInsensitive));
    field->setText(u"gibt es hier nicht"_s);
    EXPECT_EQ(hits(), u"nicht gefunden"_s);
    field->clear();
    EXPECT_EQ(hits(), u""_s);

    QStringList links;
    for (QTextBlock block = text(*manual)->document()->begin(); block.isValid(); block = block.next())
        for (auto part = block.begin(); !part.atEnd(); ++part)
            if (const QString link = part.fragment().charFormat().anchorHref(); link.startsWith(u'#'))
                links << link;
    ASSERT_FALSE(links.isEmpty());
    for (const QString& link : std::as_const(links)) {
        Q_EMIT text(*manual)->anchorClicked(QUrl(link));
        EXPECT_EQ(u'#' + modHandbuch::anchorOf(placeIn(*manual)), link);
    }
}

namespace {

class AboutTest : public test::ScreenTest<frmSystemAbout> {
  protected:
    ~AboutTest() override { qputenv("PATH", m_path); }

  private:
    QByteArray m_path = qgetenv("PATH");
};

} // namespace

TEST_F(AboutTest, TheDiagnosisCountsAndTellsNothingAboutPeople) {
    internet.ends.strFTPServer = u"ftp.pizzeria-muster.example"_s;
    internet.ends.strFTPUser = u"anna.muster"_s;
    internet.ends.strFTPPassword = u"sehr-geheim"_s;
    internet.ends.strDomainMapping = u"https://pizzeria-muster.example"_s;
    internet.ends.installation = u"Pizzeria Muster"_s;
    ConnMain.Execute(
        u"INSERT INTO tbl_Einstellungen_Benutzer (txt_Username, txt_Passwort) VALUES ('Erna', 'Kennwort')"_s);
    QFile log(firm.folder() + u"/Data/tavolino.log"_s);
    ASSERT_TRUE(log.open(QIODevice::WriteOnly));
    log.write("2026-11-22 18:05:09 Fehler: 3021 Kein Satz zu Meier | SELECT geheim\n"
              "2026-11-22 18:05:10 Qt: Warnung mit Meier\n"
              "2026-11-22 18:05:11 Fehler im Hintergrund: 0791234567 ruft an\n");
    log.close();
    open();
    expectReachable();
    EXPECT_EQ(text(u"txt_VersionNumber"), common::kProgramVersion.text());
    click(u"cmdDiagnose");
    const QString told = QGuiApplication::clipboard()->text();
    for (const QString& line :
         {u"Tavolino "_s + common::kProgramVersion.text(), u"Qt "_s + QLatin1String(qVersion()),
          u"Schema: %1"_s.arg(store::kSchemaVersion), u"FtpServer: ja"_s, u"SystemAdresse: nein"_s,
          u"tbl_Verwaltung_Kunden: %1"_s.arg(test::TestFirm::count(u"tbl_Verwaltung_Kunden"_s)),
          u"2026-11-22 18:05:09 Fehler 3021"_s, u"2026-11-22 18:05:11 Fehler im Hintergrund unerwartet"_s})
        EXPECT_TRUE(told.contains(line + u'\n')) << line.toStdString() << '\n' << told.toStdString();

    QStringList secrets{u"muster"_s, u"geheim"_s,   u"Meier"_s,    u"Warnung"_s,
                        u"Erna"_s,   u"Kennwort"_s, firm.folder(), QSysInfo::machineHostName()};
    for (const QString& row :
         test::TestFirm::rows(
             u"SELECT txt_Name, txt_Vorname, txt_Strasse, txt_Ort, txt_Telefon, txt_Natel, txt_EMail FROM "
             u"tbl_Verwaltung_Kunden"_s) +
             test::TestFirm::rows(u"SELECT txt_Produkt FROM tbl_Verwaltung_Produkte"_s))
        secrets << row.split(u'|');
    ASSERT_GT(secrets.size(), 20);
    for (const QString& secret : std::as_const(secrets))
        EXPECT_FALSE(secret.size() > 2 && told.contains(secret, Qt::CaseInsensitive)) << secret.toStdString();
}

TEST_F(AboutTest, TheSystemsOwnProgramIsStartedWhereThereIsOne) {
    const QTemporaryDir programs;
    const QString trace = programs.filePath(u"started"_s);
    qputenv("PATH", programs.path().toLocal8Bit());
    open();
    click(u"cmdSysInfo");
    EXPECT_EQ(said(), test::Said({{u"System Information Is Unavailable At This Time"_s, 0, {}}}));
    QFile program(programs.filePath(u"kinfocenter"_s));
    ASSERT_TRUE(program.open(QIODevice::WriteOnly));
    program.write("#!/bin/sh\necho > \"" + trace.toLocal8Bit() + "\"\n");
    program.close();
    ASSERT_TRUE(program.setPermissions(QFile::ReadOwner | QFile::ExeOwner));
    click(u"cmdSysInfo");
    EXPECT_TRUE(QTest::qWaitFor([&] { return QFile::exists(trace); }));
    EXPECT_TRUE(said().isEmpty());
}
