#include "program/Station.h"
#include "common/Guard.h"
#include "orders/frmAuftragswesenAuftragserfassung.h"
#include "platform/IniRegistryStore.h"
#include "shell/Application.h"
#include "store/ServerState.h"
#include "support/Keys.h"
#include "support/TestDialogs.h"
#include "support/TestFirmServices.h"
#include <QApplication>
#include <QLabel>
#include <QTest>
#include <QUuid>
#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace test {
namespace {

constexpr int kBreath = 100;

void say(const QString& line) {
    std::printf("%s\n", qPrintable(line));
    std::fflush(stdout);
}

/// What a clerk answers.
class StationDialogs : public TestDialogs {
  public:
    int MsgBox(const QString& text, int style, const QString& title) override {
        // Everybody is called by the same customer.
        if (text.contains(u"angefangener Auftrag"_s) || text.contains(u"nimmt diesen Anruf bereits an"_s))
            return platform::kAnswerYes;
        if (text.contains(u"drucken ?"_s))
            return platform::kAnswerNo;
        if ((style & 7) == platform::kRetryCancel) {
            QTest::qWait(kBreath);
            return platform::kAnswerRetry;
        }
        // Who has lost the server is told, and the screen stays; that is what the station is about.
        if (!text.contains(u"erver "_s) && !text.contains(u"andere Station speichert"_s))
            say(u"? "_s + QString(text).replace(u'\n', u' '));
        QTest::qWait(kBreath);
        return TestDialogs::MsgBox(text, style, title);
    }
};

class Station {
  public:
    explicit Station(const QString& installation) :
        m_registry(installation + u"/einstellungen.ini"_s),
        m_program({.appPath = installation,
                   .dialogs = m_dialogs,
                   .registry = m_registry,
                   .reports = m_reports,
                   .printers = m_printers,
                   .internet = m_internet,
                   .exitProcess = [](int code) { std::_Exit(code); }}) {}

    int run() {
        if (!m_program.start())
            return EXIT_FAILURE;
        QApplication::setActiveWindow(&window());
        for (;;) {
            const QString conditions = keyOrder();
            if (!conditions.isEmpty())
                book(conditions);
            QCoreApplication::processEvents();
        }
    }

  private:
    frmMDI& window() { return m_program.mainWindow(); }

    frmAuftragswesenAuftragserfassung* screen() {
        return qobject_cast<frmAuftragswesenAuftragserfassung*>(
            window().screens().open(u"frmAuftragswesenAuftragserfassung"_s));
    }

    void press(Qt::Key key) {
        QWidget* focus = QApplication::focusWidget();
        QTest::keyClick(focus ? focus : &window(), key);
    }

    QString conditions() { return screen()->order().detail(orders::Detail::Konditionen); }

    /// Its conditions; "" where it did not come to an end, and goes on next time.
    QString keyOrder() {
        if (!screen() || screen()->order().detail(orders::Detail::KundenNr).isEmpty()) {
            common::guarded(common::Origin::Timer,
                            [this] { window().BasicCAPI32_IncomingCall({}, u"0791234567"_s, {}); });
            press(Qt::Key_F9);
            if (!screen() || screen()->order().detail(orders::Detail::KundenNr).isEmpty())
                return {};
            screen()->order().ChooseKonditionen(QUuid::createUuid().toString(QUuid::Id128));
            m_wanted = 1 + m_booked % 4;
        }
        while (screen()->order().LastFilledRow() + 1 < m_wanted) {
            const int before = screen()->order().LastFilledRow();
            press(Qt::Key_F6);
            typeText(m_booked % 2 == 0 ? u"10"_s : u"W"_s);
            press(Qt::Key_Return);
            if (screen()->order().LastFilledRow() > before)
                continue;
            press(Qt::Key_Escape);
            return {};
        }
        return conditions();
    }

    void book(const QString& conditions) {
        auto* message = window().findChild<QLabel*>(u"MDIMeldung"_s);
        message->clear();
        say(u"K %1 %2"_s.arg(conditions).arg(screen()->order().LastFilledRow() + 1));
        press(Qt::Key_F12);
        const QStringList words = message->text().split(u' ');
        if (words.size() != 3 || words[2] != u"verbucht"_s)
            return;
        ++m_booked;
        say(u"B %1 %2 %3 %4"_s.arg(words[1], conditions)
                .arg(store::repeatedTransactions())
                .arg(m_dialogs.serverCalls));
    }

    StationDialogs m_dialogs;
    platform::IniRegistryStore m_registry;
    TestReports m_reports;
    TestPrinters m_printers;
    TestInternet m_internet;
    shell::Application m_program;
    int m_wanted = 1, m_booked = 0;
};

} // namespace

int runStation(const QString& installation) {
    // Not unwound: it is killed, or ends at once.
    return (new Station(installation))->run();
}

} // namespace test
