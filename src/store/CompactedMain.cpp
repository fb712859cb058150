#include "store/CompactedMain.h"
#include "store/CheckDatabase.h"
#include "store/ConnectionString.h"
#include "store/CreateDatabase.h"
#include "store/MainCopies.h"
#include "store/ServerDatabase.h"
#include "store/StoreGlobals.h"
#include <QFileInfo>

namespace store {

namespace {

/// A stretch of the whole, in hundredths.
Progress part(const Progress& whole, int from, int to) {
    return [&whole, from, to](qint64 done, qint64 total) {
        constexpr qint64 kFine = 1000;
        whole(from * kFine + (total > 0 ? (to - from) * kFine * qMin(done, total) / total : 0), 100 * kFine);
    };
}

} // namespace

CompactedMain::CompactedMain(const Progress& progress) {
    const QString clean = ConnectionString::parse(mainCompactionTarget()).path;
    const bool onServer = hasServer();
    if (!onServer)
        m_hold.emplace(mainCompactionSource());
    removeDatabase(clean);
    progress(10, 100);
    if (onServer)
        CompactDatabase(mainConnectionString(), mainCompactionTarget(), part(progress, 10, 60));
    else
        m_hold->CompactDatabase(mainCompactionTarget(), part(progress, 10, 60));
    try {
        CheckDatabase(clean, QString::fromLatin1(kMainPassword), mainTables(), part(progress, 60, 70));
        progress(70, 100);
        m_file = onServer ? clean : ConnectionString::parse(mainConnectionString()).path;
        if (!onServer)
            putInPlace(clean);
    } catch (...) {
        removeDatabase(clean);
        throw;
    }
    progress(100, 100);
}

void CompactedMain::putInPlace(const QString& clean) {
    m_hold->replaceWith(clean);
    m_hold.reset();
    m_hold.emplace(mainConnectionString());
}

CompactedMain::~CompactedMain() {
    if (!m_hold)
        QFile::remove(m_file);
}

qint64 mainSize() {
    const ConnectionString main = ConnectionString::parse(mainConnectionString());
    return main.isServer() ? sizeOnServer(main) : QFileInfo(main.path).size();
}

} // namespace store
