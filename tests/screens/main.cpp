#include "platform/form/FieldHelpers.h"
#include "shell/AppStyle.h"
#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    shell::applyStyle(application);
    platform::setWaiting(false);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
