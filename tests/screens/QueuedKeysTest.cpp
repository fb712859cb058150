// Keys that wait in the queue while a box opens, and editors that stand open while the order changes.
#include "common/Guard.h"
#include "orders/modAuftragswesenAuftragserfassung.h"
#include "platform/QtDialogs.h"
#include "screens/OrderScreenFixture.h"
#include <QAbstractButton>
#include <QMessageBox>
#include <QTimer>
#include <iterator>
#include <ranges>

using namespace Qt::StringLiterals;
using orders::Col;
using test::TestFirm;

namespace {

const QString kHeads = u"tbl_Auftragswesen_Bestellungen_Master"_s;

/// With the program's own message boxes.
class QueuedKeysTest : public test::OrderScreen<platform::QtDialogs> {
  protected:
    /// Answers each box with No, some time after it opened.
    void answerBoxes() {
        answer.callOnTimeout([this] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (!box)
                return;
            asked << box->text();
            if (QAbstractButton* no = box->button(QMessageBox::No))
                no->click();
            else
                box->accept();
        });
        answer.start(100);
    }

    void waitFor(qsizetype boxes) {
        EXPECT_TRUE(
            QTest::qWaitFor([&] { return asked.size() >= boxes && !QApplication::activeModalWidget(); }));
        QTest::qWait(20);
    }

    QTimer answer;
    QStringList asked;
};

class OpenEditorTest : public test::OrderScreen<test::TestDialogs> {
  protected:
    /// Books wine, then leaves "FUNG" in an open editor of the next free row.
    void leaveAnEditorOpen() {
        order().SucheTelefonNummer(u"0791234567"_s);
        order().PickProdukt(TestFirm::kWein, u"W"_s, 1);
        modAuftragswesenAuftragserfassung::SaveBestellung(order(), dialogs, navigation);
        press(Qt::Key_F6);
        type(u"FUNG"_s);
        ASSERT_EQ(QApplication::focusWidget()->objectName(), u"cellEditor"_s);
    }
};

TEST_F(QueuedKeysTest, KeysBehindBookingNeitherBookTwiceNorReplaceTheOrder) {
    const auto take = [this] {
        order().SucheTelefonNummer(u"0791234567"_s);
        order().PickProdukt(TestFirm::kWein, u"W"_s, 1);
    };
    take();
    modAuftragswesenAuftragserfassung::SaveBestellung(order(), *std::make_unique<test::TestDialogs>(),
                                                      navigation);
    take();
    order().PickProdukt(TestFirm::kMargherita, u"1"_s, 1);
    answerBoxes();
    QString shown;
    answer.callOnTimeout([&] { shown += shown.isEmpty() ? cell(1, Col::Bezeichnung) : QString(); });
    test::queueKey(Qt::Key_F12);
    test::queueKey(Qt::Key_F12);
    test::queueKey(Qt::Key_Left, Qt::AltModifier);
    test::queueKey(Qt::Key_M, Qt::AltModifier);
    waitFor(1);
    EXPECT_EQ(asked, QStringList{u"Wollen Sie die Bestellung drucken ?"_s});
    EXPECT_EQ(shown, u"Pizza"_s) << "the order stands while the question does";
    EXPECT_EQ(TestFirm::count(kHeads), 2);
}

struct KeyPress {
    Qt::Key key;
    Qt::KeyboardModifiers modifiers = {};
    QString text = {};
};

/// Telephone number, lines, discount in its box, booking, no to its question.
std::vector<KeyPress> keysOfAnOrder(const QString& quantity) {
    std::vector<KeyPress> keys;
    const auto entry = [&](const QString& typed) {
        for (const QChar c : typed)
            keys.push_back({Qt::Key(c.unicode()), {}, c});
        keys.push_back({Qt::Key_Return});
    };
    keys.push_back({Qt::Key_F3});
    entry(u"0791234567"_s);
    keys.push_back({Qt::Key_F6});
    entry(u"1"_s);
    entry(quantity);
    entry(u"10"_s);
    keys.push_back({Qt::Key_Return});
    entry(u"W"_s);
    entry(quantity);
    keys.push_back({Qt::Key_B, Qt::AltModifier});
    entry(u"5"_s);
    keys.push_back({Qt::Key_F12});
    keys.push_back({Qt::Key_N});
    return keys;
}

TEST_F(QueuedKeysTest, ARobotTypesWholeOrdersAndEveryKeyLands) {
    constexpr int kOrders = 4;
    constexpr int kPause = 5;
    // Gives the focus back once a dialog has gone.
    QTimer windowManager;
    windowManager.callOnTimeout([this] {
        if (!QGuiApplication::focusWindow())
            screen->activateWindow();
    });
    windowManager.start(20);
    std::vector<KeyPress> keys;
    for (int order = 0; order < kOrders; ++order)
        std::ranges::move(keysOfAnOrder(QString::number(order + 2)), std::back_inserter(keys));
    size_t next = 0;
    const std::function<void()> typeNext = [&] {
        if (next == keys.size())
            return;
        QTimer::singleShot(kPause, screen.get(), typeNext);
        const KeyPress& key = keys[next++];
        QWindow* focused = QGuiApplication::focusWindow();
        test::pressIn(focused ? focused : screen->windowHandle(), key.key, key.modifiers, key.text);
    };
    typeNext();
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return TestFirm::count(kHeads) == kOrders && !QApplication::activeModalWidget(); }, 20000));
    for (int order = 0; order < kOrders; ++order) {
        screen->loadBooking(1000 + order);
        const int n = order + 2;
        const double expected[][2] = {{n * 1.0, 0.7 * n}, {1, 0.8}, {n * 1.0, 0.6 * n}};
        ASSERT_EQ(screen->order().LastFilledRow(), 2) << order;
        for (int row = 0; row < 3; ++row) {
            EXPECT_EQ(screen->order().BestellungGrid.number(row, Col::Anzahl), expected[row][0]) << order;
            EXPECT_NEAR(screen->order().BestellungGrid.number(row, Col::Rabatt), expected[row][1], 0.001)
                << order;
        }
    }
}

TEST_F(OpenEditorTest, WhatReplacesTheOrderDropsIt) {
    leaveAnEditorOpen();
    const std::pair<const char*, std::function<void()>> roads[] = {
        {"step", [&] { press(Qt::Key_Right, Qt::AltModifier); }},
        {"clean", [&] { find<QPushButton>(u"cmdCleanMask")->click(); }},
        {"call", [&] { screen->takeCall(u"0799999999"_s); }},
        {"search", [&] { screen->searchNumber(u"0791234567"_s); }}};
    for (const auto& [name, road] : roads) {
        press(Qt::Key_F6);
        type(u"W"_s);
        road();
        press(Qt::Key_F3);
        const int lines = name == std::string_view("step") ? 1 : 0;
        EXPECT_EQ(order().LastFilledRow(), lines - 1) << name;
        EXPECT_EQ(cell(lines, Col::Kurzzeichen), u""_s) << name;
    }
}

TEST_F(OpenEditorTest, WhatReadsTheOrderTakesItOver) {
    const auto key = [&](const char16_t* quantity) {
        find<platform::CellGrid>(u"BestellungGrid")->setFocus();
        find<platform::CellGrid>(u"BestellungGrid")->goTo({0, Col::Anzahl}, true);
        type(QString::fromUtf16(quantity));
    };
    const auto stored = [] {
        return OrderScreen::stored(u"SELECT dbl_PreisMitMWSt FROM tbl_Auftragswesen_Bestellungen_Details"_s);
    };
    order().SucheTelefonNummer(u"0791234567"_s);
    order().PickProdukt(TestFirm::kWein, u"W"_s, 1);
    key(u"3x");
    press(Qt::Key_F12);
    EXPECT_TRUE(dialogs.said.isEmpty()) << "what is refused is looked at before it is booked";
    key(u"3x");
    QTest::mouseClick(find<QPushButton>(u"cmdSave"), Qt::LeftButton);
    EXPECT_TRUE(dialogs.said.isEmpty()) << "nor does a click that takes the focus from it book it";
    EXPECT_TRUE(find<platform::CellGrid>(u"BestellungGrid")->hasFocus());
    key(u"3x");
    QTest::mouseClick(find<QLineEdit>(u"txt_SucheTelefonNummer"), Qt::LeftButton);
    QCoreApplication::processEvents();
    dialogs.answerInput(u"50"_s);
    QTest::mouseClick(find<QPushButton>(u"cmdRabatt"), Qt::LeftButton);
    EXPECT_EQ(order().total(orders::TotalRow::Total), 6) << "a later click is one of its own";
    order().SetRabattBestellung(0);
    key(u"3");
    dialogs.answer(platform::kAnswerNo);
    press(Qt::Key_F12);
    EXPECT_EQ(stored(), u"36"_s);

    screen->loadBooking(1000);
    key(u"2");
    dialogs.answer(platform::kAnswerYes);
    dialogs.answer(platform::kAnswerYes);
    reports.onRun = [&](const platform::ReportJob&) {
        EXPECT_EQ(stored(), u"36"_s) << "the slip comes before the change is stored";
        return platform::ReportEnd::Done;
    };
    find<QPushButton>(u"cmdVerwaltungSave")->click();
    reports.onRun = {};
    EXPECT_EQ(TestFirm::value(u"SELECT [TotalPreis] FROM ZusatzInfo"_s, ConnPrint), u"24.00"_s);
    EXPECT_EQ(stored(), u"24"_s);

    screen->loadBooking(1000);
    key(u"1");
    find<QPushButton>(u"cmdPrint")->click();
    EXPECT_EQ(TestFirm::value(u"SELECT [TotalPreis] FROM ZusatzInfo"_s, ConnPrint), u"12.00"_s);
}

} // namespace
