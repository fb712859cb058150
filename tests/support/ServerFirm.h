#pragma once
#include "tests/support/DatabaseServer.h"

namespace test {

/// Where the firm's main database stands this time, by TAVOLINO_TEST_ENGINE: in its file; on a server
/// ("mariadb"); in both, which are then compared at every statement ("both").
enum class Stand { File, Server, Both };
Stand stand();

/// Copies the main database of the installation's file into an empty one of a server.
void copyFirmTo(const store::ConnectionString& server);

/// The main database of an installation, copied to a server and opened there from now on, alone or beside the
/// file as stand() says.
class ServerFirm {
  public:
    explicit ServerFirm(DatabaseServer& server);
    ~ServerFirm();
    ServerFirm(const ServerFirm&) = delete;
    ServerFirm& operator=(const ServerFirm&) = delete;

    const QString& name() const { return m_database.name(); }

  private:
    ServerDatabase m_database;
};

} // namespace test
