#include "install/Installer.h"
#include "common/RunTimeError.h"
#include "install/Bulk.h"
#include "install/DemoFirm.h"
#include "install/FirstRows.h"
#include "install/LargeFirm.h"
#include "install/Resources.h"
#include "install/Schema.h"
#include "store/CreateDatabase.h"
#include "store/SqliteEngine.h"
#include <QDir>
#include <QDirIterator>
#include <QFile>

namespace install {
namespace {

using namespace Qt::StringLiterals;

[[noreturn]] void failOn(const QString& sentence, const QString& path) {
    throw common::RunTimeError(common::kPlatformFailure, sentence.arg(QDir::toNativeSeparators(path)), path);
}

/// One run: where to, how, and what was done so far.
class Installation {
  public:
    Installation(const QString& appFolder, const InstallOptions& options) :
        m_root(appFolder), m_options(options) {}

    QStringList run() {
        for (const char16_t* folder : {u"Data", u"Reports", u"Internet/Pictures_Small",
                                       u"Internet/Pictures_Large", u"Internet/Pictures_Temp"})
            makeFolder(QString::fromUtf16(folder));
        for (const DatabaseFile& file : databaseFiles())
            makeDatabase(file);
        for (const char16_t* picture : {u"Internet/logo_demokurier.jpg", u"Internet/logo_kurier.jpg"})
            makeFile(QString::fromUtf16(picture), resource(u"files/logo_demokurier.jpg"_s), kForAll);
        makeIniFile();
        copyReports();
        return m_done;
    }

  private:
    static constexpr QFile::Permissions kForOwner = QFile::ReadOwner | QFile::WriteOwner;
    static constexpr QFile::Permissions kForAll = kForOwner | QFile::ReadGroup | QFile::ReadOther;

    void makeFolder(const QString& name) {
        if (!QDir(m_root).mkpath(name))
            failOn(u"Der Ordner \"%1\" kann nicht angelegt werden."_s, m_root.filePath(name));
    }

    void makeDatabase(const DatabaseFile& file) {
        const QString path = m_root.filePath(u"Data/"_s + file.fileName);
        if (QFile::exists(path)) {
            m_done.append(u"%1 besteht bereits und bleibt, wie sie ist."_s.arg(file.fileName));
            return;
        }
        const QString unfinished = path + u".neu"_s;
        for (const char16_t* suffix : {u"", u"-wal", u"-shm", u"-journal"})
            QFile::remove(unfinished + QString::fromUtf16(suffix));
        store::createDatabase(unfinished, file.password, file.schemaVersion);
        fill(unfinished, file);
        if (!QFile::rename(unfinished, path))
            failOn(u"Die Datei \"%1\" kann nicht angelegt werden."_s, path);
        m_done.append(u"%1 angelegt."_s.arg(file.fileName));
    }

    /// Until the file has its name nobody needs it back after a crash: it is written without a journal.
    void fill(const QString& path, const DatabaseFile& file) {
        store::SqliteEngine engine(path, file.password);
        sqlite3* handle = engine.handle();
        runScript(handle, "PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF; PRAGMA cache_size = -200000;"
                          "BEGIN IMMEDIATE");
        createTables(handle, file.database);
        addFirstRows(handle, file.database);
        if (m_options.demo)
            addDemoFirm(handle, file.database);
        if (m_options.large > 0)
            addLargeFirm(handle, file.database, m_options.large);
        createIndexesAndViews(handle, file.database);
        runScript(handle, "COMMIT; PRAGMA synchronous = FULL; PRAGMA journal_mode = WAL");
    }

    void makeFile(const QString& name, const QByteArray& content, QFile::Permissions permissions) {
        const QString path = m_root.filePath(name);
        if (QFile::exists(path))
            return;
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly, permissions) ||
            file.write(content) != content.size() || !file.flush())
            failOn(u"Die Datei \"%1\" kann nicht angelegt werden."_s, path);
        m_done.append(u"%1 angelegt."_s.arg(name));
    }

    void makeIniFile() { makeFile(u"tavolino.ini"_s, resource(u"files/tavolino.ini"_s), kForOwner); }

    void copyReports() {
        if (m_options.reportsFrom.isEmpty())
            return;
        const QDir from(QDir(m_options.reportsFrom).absolutePath());
        if (!from.exists())
            failOn(u"Der Ordner \"%1\" mit den Berichten besteht nicht."_s, from.path());
        int copied = 0;
        for (QDirIterator file(from.path(), QDir::Files, QDirIterator::Subdirectories); file.hasNext();) {
            const QString path = file.next();
            copied += copyReport(path, u"Reports/"_s + from.relativeFilePath(path));
        }
        if (copied > 0)
            m_done.append(u"%1 Berichtsvorlagen kopiert."_s.arg(copied));
    }

    bool copyReport(const QString& from, const QString& name) {
        const QString to = m_root.filePath(name);
        if (QFile::exists(to))
            return false;
        makeFolder(QFileInfo(name).path());
        if (!QFile::copy(from, to))
            failOn(u"Die Datei \"%1\" kann nicht angelegt werden."_s, to);
        QFile::setPermissions(to, kForAll);
        return true;
    }

    const QDir m_root;
    const InstallOptions m_options;
    QStringList m_done;
};

} // namespace

QStringList installDatabases(const QString& appFolder, const InstallOptions& options) {
    return Installation(appFolder, options).run();
}

} // namespace install
