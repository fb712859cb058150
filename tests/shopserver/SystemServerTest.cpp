#include "shopserver/MessageStore.h"
#include "shopserver/SystemFolder.h"
#include "support/Servers.h"
#include <QDir>
#include <gtest/gtest.h>
#include <httplib.h>

using namespace Qt::StringLiterals;

namespace {

/// Status and text of each answer.
class Caller {
  public:
    explicit Caller(const test::WebShop& server) : m_client("127.0.0.1", server.port()) {}

    std::string post(const std::string& script) { return said(m_client.Post(kSystem + script)); }

    std::string get(const std::string& file) { return said(m_client.Get(kSystem + file)); }

  private:
    static constexpr char kSystem[] = "/rootTavolinoNet/System/";

    static std::string said(const httplib::Result& result) {
        return result ? std::to_string(result->status) + ' ' + result->body : "nothing";
    }

    httplib::Client m_client;
};

constexpr char kNoMessage[] = "200 =/01=1=01/==/02=0=02/==/03=5=03/==/04=1=04/==/05=0=05/==/06=4=06/="
                              "=/07=46371=07/==/08=0=08/==/09==09/=";

} // namespace

TEST(SystemServer, OffersVersionsAndPackages) {
    test::SystemServer server;
    server.offer(u"1.0.5"_s, u"1.0.4"_s, QDate(2026, 12, 15), 202611);
    // More than one block, and not a whole number of them.
    const QByteArray package = QByteArray("package\r\n\0", 10).repeated(100'000) + "end";
    server.put(u"Update.exe"_s, package);
    server.put(u"Update.exe.sig"_s, "Tavolino-Signatur 1\n");
    ASSERT_TRUE(server.start());
    Caller caller(server.web);
    EXPECT_EQ(caller.post("TavolinoNet_SoftwareVersion.asp"), "200 =/01=1=01/==/02=0=02/==/03=5=03/=");
    EXPECT_EQ(caller.post("TavolinoNet_PhoneBookVersion.asp"), "200 =/01=202611=01/=");
    EXPECT_EQ(caller.post("TavolinoNet_Start.asp?id1=pizzeria&id2=1.0.4"), kNoMessage);
    EXPECT_EQ(caller.get("Update.exe"), "200 " + package.toStdString());
    EXPECT_EQ(httplib::Client("127.0.0.1", server.web.port())
                  .Head("/rootTavolinoNet/System/Update.exe")
                  ->get_header_value("Content-Length"),
              std::to_string(package.size()));
    EXPECT_EQ(caller.get("Update.exe.sig"), "200 Tavolino-Signatur 1\n");
    for (const char* other : {"DBTavolinoPhone.exe", "UpdateXexe", "system.json", "messages/pizzeria.txt"})
        EXPECT_EQ(caller.get(other).substr(0, 3), "404") << other;

    // What is put there later needs no restart, and what is broken is told to nobody.
    server.offer(u"1.1.0"_s, u"1.0.4"_s, QDate(2026, 12, 15), 202612);
    EXPECT_EQ(caller.post("TavolinoNet_PhoneBookVersion.asp"), "200 =/01=202612=01/=");
    for (const char* version : {"", "1.0", "1.0.5.", "1.1000.0", "1.0.-5", "=01/="}) {
        server.offer(QLatin1String(version), u"1.0.4"_s, QDate(2026, 12, 15), 202611);
        EXPECT_EQ(caller.post("TavolinoNet_SoftwareVersion.asp"), "500 Fehler im Server.") << version;
    }

    const QTemporaryDir folder;
    QDir(folder.path()).mkdir(u"ftp"_s);
    test::WebShop shop(folder.filePath(u"ftp"_s));
    ASSERT_TRUE(shop.start());
    Caller shopCaller(shop);
    for (const char* script : {"TavolinoNet_SoftwareVersion.asp", "TavolinoNet_Start.asp?id1=pizzeria",
                               "TavolinoNet_NachrichtSenden.asp?Nachricht=a"})
        EXPECT_EQ(shopCaller.post(script), "404 ") << script;
}

TEST(SystemServer, TellsAMessageUntilItIsRead) {
    test::SystemServer server;
    server.put(u"messages/pizzeria.txt"_s, "Grüezi =/09=\r\n\x1b[2J");
    server.put(u"secret.txt"_s, "secret");
    ASSERT_TRUE(server.start());
    auto caller = std::make_unique<Caller>(server.web);
    const auto told = [&](const std::string& name) {
        const std::string answer = caller->post("TavolinoNet_Start.asp?id1=" + name);
        return answer.substr(std::min(answer.size(), answer.find("=/08=")));
    };
    const auto read = [&] { return caller->post("TavolinoNet_NachrichtGelesen.asp?id1=pizzeria"); };
    const std::string none = "=/08=0=08/==/09==09/=";
    for (const char* name : {"", "..%2Fsecret", "..", "%2e%2e%2fmessages%2fpizzeria", "pizzeria.txt",
                             "pizzeria%00", "Pizzeria", "*"})
        EXPECT_EQ(told(name), none) << name;

    EXPECT_EQ(told("pizzeria"), "=/08=1=08/==/09=Grüezi = /09=\n [2J=09/=");
    server.put(u"messages/pizzeria.txt"_s, "Neu");
    EXPECT_EQ(read(), "200 OK");
    EXPECT_EQ(told("pizzeria"), "=/08=1=08/==/09=Neu=09/=") << "nobody has seen it when the former was read";
    server.put(u"message.txt"_s, "An alle");
    EXPECT_EQ(told("pizzeria"), "=/08=1=08/==/09=Neu=09/=");
    EXPECT_EQ(read(), "200 OK");
    server.web.kill();
    ASSERT_TRUE(server.start());
    caller = std::make_unique<Caller>(server.web);
    EXPECT_EQ(told("pizzeria"), "=/08=1=08/==/09=An alle=09/=");
    EXPECT_EQ(read(), "200 OK");
    EXPECT_EQ(told("pizzeria"), none);
    EXPECT_EQ(told("kurier"), "=/08=1=08/==/09=An alle=09/=");
}

TEST(SystemServer, KeepsWhatInstallationsWrite) {
    test::SystemServer server;
    ASSERT_TRUE(server.start());
    Caller caller(server.web);
    const auto send = [&](const std::string& text) {
        return caller.post("TavolinoNet_NachrichtSenden.asp?Nachricht=" + text).substr(0, 6);
    };
    EXPECT_EQ(send("Gr%C3%BCezi%0D%0A2%20%20faked%1B[2J%26%25"), "200 OK");
    EXPECT_EQ(send("%20").substr(0, 3), "400");
    EXPECT_NE(send(std::string(20'000, 'x')), "200 OK");
    server.web.kill();
    EXPECT_TRUE(server.web.sentMessages().endsWith(u" von 127.0.0.1:\n    Grüezi\n    2  faked [2J&%\n\n"_s))
        << server.web.sentMessages().toStdString();
    EXPECT_FALSE(server.web.log().contains(u"faked"_s));

    const QTemporaryDir folder;
    shop::MessageStore store(folder.filePath(u"messages.db"_s), 2, 2);
    EXPECT_TRUE(store.add(u"::1"_s, u"a"_s));
    EXPECT_TRUE(store.add(u"::1"_s, u"b"_s));
    EXPECT_FALSE(store.add(u"::1"_s, u"c"_s));
    store.removeUpTo(1);
    EXPECT_TRUE(store.add(u"::1"_s, u"d"_s));
    EXPECT_EQ(store.sent().constFirst().text, u"b");

    // Names that nobody has do not push out what was read.
    const QStringList message{u"An alle"_s};
    store.tell(u"pizzeria"_s, message);
    store.markRead(u"pizzeria"_s);
    for (const QString& name : {u"x"_s, u"y"_s, u"z"_s})
        EXPECT_EQ(store.tell(name, message), message.first());
    EXPECT_EQ(store.tell(u"pizzeria"_s, message), QString());
    store.markRead(u"z"_s);
    EXPECT_EQ(store.tell(u"z"_s, message), QString());
    EXPECT_EQ(store.tell(u"x"_s, message), message.first());
}
