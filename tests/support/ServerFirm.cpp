#include "tests/support/ServerFirm.h"
#include "store/EngineWrapper.h"
#include "store/MariaEngine.h"
#include "store/ServerDatabase.h"
#include "store/StoreGlobals.h"
#include "tests/support/TwinEngine.h"
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace test {
namespace {

/// Where the tests are to run on a server and there is none, they are skipped as one.
class ServerThere : public testing::Environment {
  public:
    void SetUp() override {
        if (stand() != Stand::File && !DatabaseServer::shared())
            GTEST_SKIP() << "no database server: " << DatabaseServer::whyNotShared().toStdString();
    }
};

[[maybe_unused]] const testing::Environment* const serverThere =
    testing::AddGlobalTestEnvironment(new ServerThere);

} // namespace

Stand stand() {
    const QByteArray asked = qgetenv("TAVOLINO_TEST_ENGINE");
    return asked == "mariadb" ? Stand::Server : asked == "both" ? Stand::Both : Stand::File;
}

void copyFirmTo(const store::ConnectionString& server) {
    store::ServerDatabase target(server);
    target.load(*store::openEngine(store::ConnectionString::parse(store::mainConnectionString())),
                store::Database::Main);
    target.putInPlace();
}

ServerFirm::ServerFirm(DatabaseServer& server) : m_database(server) {
    const store::ConnectionString parts = m_database.connection();
    const auto file = store::ConnectionString::parse(store::mainConnectionString());
    server.sql(u"CREATE DATABASE "_s + m_database.name());
    copyFirmTo(parts);
    if (stand() == Stand::Server) {
        store::setServer(parts, false);
        return;
    }
    store::setEngineWrapper([=, path = file.path](
                                std::unique_ptr<store::Engine> engine,
                                const store::ConnectionString& asked) -> std::unique_ptr<store::Engine> {
        if (asked.path != path)
            return engine;
        return std::make_unique<TwinEngine>(std::move(engine), std::make_unique<store::MariaEngine>(parts));
    });
}

ServerFirm::~ServerFirm() {
    store::setEngineWrapper({});
    store::setServer({}, false);
}

} // namespace test
