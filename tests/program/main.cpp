#include "program/Booker.h"
#include "program/Saver.h"
#include "program/Station.h"
#include <QApplication>
#include <gtest/gtest.h>

/// With "--book <installation>", "--save <installation>" or "--station <installation>" this program is the
/// process that a kill test kills.
int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.value(1) == QStringLiteral("--book"))
        return test::bookUntilKilled(arguments.value(2));
    if (arguments.value(1) == QStringLiteral("--save"))
        return test::saveUntilKilled(arguments.value(2));
    if (arguments.value(1) == QStringLiteral("--station"))
        return test::runStation(arguments.value(2));
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
