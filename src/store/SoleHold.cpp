#include "store/SoleHold.h"
#include "common/AtomicFile.h"
#include "common/FileErrors.h"
#include "store/ConnectionString.h"
#include "store/CreateDatabase.h"
#include "store/MainCopies.h"
#include "store/ServerDatabase.h"
#include "store/SqliteEngine.h"
#include <QFile>

namespace store {

SoleHold::SoleHold(const QString& connectionString) : m_connection(connectionString) {
    const ConnectionString parts = ConnectionString::parse(connectionString);
    m_path = parts.path;
    m_password = parts.password;
    if (parts.isServer())
        m_server = std::make_unique<ServerDatabase>(parts);
    renew();
}

void SoleHold::renew() {
    if (m_server)
        return;
    m_engine.reset();
    m_engine = std::make_unique<SqliteEngine>(m_path, m_password);
    m_engine->holdAlone();
}

SoleHold::~SoleHold() = default;

Engine& SoleHold::engine() {
    return *m_engine;
}

void SoleHold::prepare(const QString& file, const Progress& progress) {
    if (m_server)
        m_server->load(*openEngine(ConnectionString::parse(backupProbeString(file))), Database::Main,
                       progress);
}

void SoleHold::CompactDatabase(const QString& targetConnection, const Progress& progress) {
    if (!m_server)
        return compact(*m_engine, m_password, targetConnection, progress);
    m_server->lock();
    store::CompactDatabase(m_connection, targetConnection, progress);
}

void SoleHold::replaceWith(const QString& file) {
    if (m_server) {
        m_server->putInPlace();
        QFile::remove(file);
    } else if (const std::error_code error = common::replaceFile(m_path, file)) {
        common::throwFileError(error, m_path);
    }
}

} // namespace store
