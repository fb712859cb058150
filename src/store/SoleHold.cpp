#include "store/SoleHold.h"
#include "common/AtomicFile.h"
#include "common/FileErrors.h"
#include "store/ConnectionString.h"
#include "store/CreateDatabase.h"
#include "store/SqliteEngine.h"

namespace store {

SoleHold::SoleHold(const QString& connectionString) {
    const ConnectionString parts = ConnectionString::parse(connectionString);
    m_path = parts.path;
    m_password = parts.password;
    renew();
}

void SoleHold::renew() {
    m_engine.reset();
    m_engine = std::make_unique<SqliteEngine>(m_path, m_password);
    m_engine->holdAlone();
}

SoleHold::~SoleHold() = default;

void SoleHold::CompactDatabase(const QString& targetConnection, const Progress& progress) {
    compact(*m_engine, m_password, targetConnection, progress);
}

void SoleHold::replaceWith(const QString& file) {
    if (const std::error_code error = common::replaceFile(m_path, file))
        common::throwFileError(error, m_path);
}

} // namespace store
