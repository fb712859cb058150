#include "shop/mod_InternetTransfer.h"
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace mod_InternetTransfer;

namespace {

TEST(InternetTransfer, ErrorsAndStatusHaveTheFirmsTexts) {
    const QString none = u"Error details not available."_s;
    for (const auto& [code, text] : {std::pair{12000, none},
                                     {12001, u"No more handles could be generated at this time"_s},
                                     {12003, u"Extended error returned from server."_s},
                                     {12013, u"Request to connect and login to an FTP server could notbe "
                                             "completed because the supplied user name is incorrect."_s},
                                     {12031, u"The connection with the server has been reset."_s},
                                     {12032, none},
                                     {12035, none},
                                     {12036, u"The request failed because the handle already exists."_s},
                                     {12037, none},
                                     {12045, none}})
        EXPECT_EQ(GetInternetErrorText(code), text) << code;
    EXPECT_EQ(GetInternetErrorText(12003, u"552 Quota"_s), u"552 Quota");
    EXPECT_EQ(GetInternetErrorText(12003, QString(300, u'x')), QString(256, u'x'));
    EXPECT_EQ(GetInternetErrorText(12002, u"552 Quota"_s), u"The request has timed out.");
    for (const auto& [code, line] : {std::pair{0, u"Looking up the IP address for x"_s},
                                     {1, u"Name resolved x"_s},
                                     {10, u"HTTP request redirected to x"_s},
                                     {20, u"Connecting to server...x"_s},
                                     {21, u"Connected to x"_s},
                                     {31, QString()},
                                     {50, u"Closing connection"_s},
                                     {51, u"Connection closed"_s},
                                     {80, u"Detecting proxy"_s},
                                     {99, QString()}})
        EXPECT_EQ(StatusLine({code, u"x"_s}), line) << code;
    for (const auto& [state, line] : {std::pair{2, u"Disconnected from network."_s},
                                      {16, u"Disconnected by user request."_s},
                                      {256, QString()}})
        EXPECT_EQ(StatusLine({200, {}, state}), line) << state;
    EXPECT_EQ(QualifyPath(u"a"_s) + QualifyPath(u"b\\"_s), u"a\\b\\");
    EXPECT_EQ(TrimNull(QString(u"ab\0cd"_s)) + TrimNull(u"ef"_s), u"abef");
}

} // namespace
