// What holds on every desktop: colours that can be read, Yes before No, keys that act at once.
#include "platform/QtDialogs.h"
#include "platform/form/Contrast.h"
#include "platform/form/GridColors.h"
#include "tests/support/Keys.h"
#include <QAbstractButton>
#include <QCheckBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QStyle>
#include <QTimer>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using platform::contrast;
using platform::kReadable;

TEST(AppStyle, EveryTextCanBeReadByDayAndByNight) {
    QPalette night(QColor(0x35, 0x35, 0x35), QColor(0x2a, 0x2a, 0x2a));
    night.setColor(QPalette::Base, QColor(0x23, 0x23, 0x23));
    night.setColor(QPalette::Highlight, QColor(42, 130, 218));
    QPalette day = QApplication::style()->standardPalette();
    for (QPalette* palette : {&day, &night}) {
        QApplication::style()->polish(*palette);
        for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
            for (const auto& [ink, ground] : {std::pair(QPalette::WindowText, QPalette::Window),
                                              {QPalette::Text, QPalette::Base},
                                              {QPalette::Text, QPalette::AlternateBase},
                                              {QPalette::ButtonText, QPalette::Button},
                                              {QPalette::HighlightedText, QPalette::Highlight},
                                              {QPalette::PlaceholderText, QPalette::Base}})
                EXPECT_GE(contrast(palette->color(group, ink), palette->color(group, ground)), kReadable)
                    << (palette == &night) << ' ' << group << ' ' << ink;
        const QColor base = palette->color(QPalette::Base);
        EXPECT_GE(contrast(platform::quietInk(*palette, base), base), kReadable);
        EXPECT_GE(contrast(palette->color(QPalette::Text), platform::quietGrey(*palette)), kReadable);
        const QColor refused = platform::refusedTint(*palette);
        EXPECT_GE(contrast(palette->color(QPalette::Text), refused), kReadable);
        EXPECT_GE(contrast(refused, base), 1.5) << "it is seen";
        EXPECT_GT(contrast(palette->color(QPalette::Active, QPalette::Highlight), base),
                  2 * contrast(palette->color(QPalette::Inactive, QPalette::Highlight), base))
            << "strong only where the focus is";
    }
}

TEST(AppStyle, YesStandsLeftOfNoAndEnterMeansIt) {
    QTimer::singleShot(0, [] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_TRUE(QTest::qWaitForWindowActive(box));
        EXPECT_LT(box->button(QMessageBox::Yes)->x(), box->button(QMessageBox::No)->x());
        EXPECT_EQ(box->defaultButton(), box->button(QMessageBox::Yes));
        test::queueKey(Qt::Key_Return);
    });
    platform::QtDialogs dialogs;
    EXPECT_EQ(dialogs.MsgBox(u"Frage"_s, platform::kYesNo), platform::kAnswerYes);
}

TEST(AppStyle, WhatIsTypedBehindTheKeyOfAButtonLandsWhereTheButtonLeads) {
    QWidget screen;
    auto* before = new QLineEdit(&screen);
    auto* behind = new QLineEdit(&screen);
    auto* box = new QCheckBox(u"&Passiv"_s, &screen);
    auto* button = new QPushButton(u"&Neu"_s, &screen);
    platform::QtDialogs dialogs;
    int answer = 0;
    QObject::connect(button, &QPushButton::clicked, [&] {
        answer = dialogs.MsgBox(u"Frage"_s, platform::kYesNo);
        behind->setFocus();
    });
    screen.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&screen));
    before->setFocus();
    test::queueKey(Qt::Key_P, Qt::AltModifier);
    test::queueKey(Qt::Key_N, Qt::AltModifier);
    test::queueText(u"jMeier"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return before->text().size() + behind->text().size() == 5; }));
    EXPECT_EQ(answer, platform::kAnswerYes);
    EXPECT_EQ(behind->text(), u"Meier"_s);
    EXPECT_TRUE(box->isChecked());
}
