#include "install/Installer.h"
#include "common/RunTimeError.h"
#include "install/Bulk.h"
#include "install/DemoFirm.h"
#include "install/FirstRows.h"
#include "install/IniFile.h"
#include "install/LargeFirm.h"
#include "install/Resources.h"
#include "install/Schema.h"
#include "platform/DatabaseSettings.h"
#include "store/BuildDatabase.h"
#include "store/CreateDatabase.h"
#include "store/ServerDatabase.h"
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
        m_root(appFolder), m_options(options),
        m_settings(platform::DatabaseSettings::read(iniFile(appFolder))) {}

    QStringList run() {
        for (const char16_t* folder : {u"Data", u"Reports", u"Internet/Pictures_Small",
                                       u"Internet/Pictures_Large", u"Internet/Pictures_Temp"})
            makeFolder(QString::fromUtf16(folder));
        if (!m_settings.problem.isEmpty())
            failOn(m_settings.problem + u" (%1)"_s, iniFile(m_root.path()));
        for (const DatabaseFile& file : databaseFiles())
            if (!isOnServer(file.database))
                makeDatabase(file);
        if (m_settings.server.isServer())
            fillServer();
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

    bool isOnServer(Database database) const {
        return database == Database::Main ? m_settings.server.isServer()
                                          : database == Database::PhoneBook && m_settings.phoneBookOnServer;
    }

    QString dataFile(const DatabaseFile& file) const { return m_root.filePath(u"Data/"_s + file.fileName); }

    void makeDatabase(const DatabaseFile& file) {
        const QString path = dataFile(file);
        if (QFile::exists(path)) {
            m_done.append(u"%1 besteht bereits und bleibt, wie sie ist."_s.arg(file.fileName));
            return;
        }
        if (!QFile::rename(filled(file), path))
            failOn(u"Die Datei \"%1\" kann nicht angelegt werden."_s, path);
        m_done.append(u"%1 angelegt."_s.arg(file.fileName));
    }

    /// Makes the database under the name that it has until it is whole.
    QString filled(const DatabaseFile& file) {
        const QString path = dataFile(file) + u".neu"_s;
        store::removeDatabase(path);
        store::buildDatabase(path, file.password, file.database, [&](store::SqliteEngine& engine) {
            sqlite3* const handle = engine.handle();
            addFirstRows(handle, file.database);
            if (m_options.demo)
                addDemoFirm(handle, file.database);
            if (m_options.large > 0)
                addLargeFirm(handle, file.database, m_options.large);
        });
        return path;
    }

    /// What the server lacks is made as a file and copied there. A station that joins others finds all.
    void fillServer() {
        store::ServerDatabase server(m_settings.server);
        const bool hasMain = server.state() == store::ServerDatabase::State::Whole;
        const QString name = m_settings.server.database;
        if (hasMain)
            m_done.append(
                u"Die Datenbank \"%1\" auf dem Server besteht bereits und bleibt, wie sie ist."_s.arg(name));
        QStringList loaded;
        for (const DatabaseFile& file : databaseFiles()) {
            const bool isThere = file.database == Database::Main ? hasMain : server.hasPhoneBook();
            if (!isOnServer(file.database) || isThere)
                continue;
            const QString path = filled(file);
            server.load(*std::make_unique<store::SqliteEngine>(path, file.password), file.database);
            store::removeDatabase(path);
            loaded.append(file.fileName.chopped(4));
        }
        if (loaded.isEmpty())
            return;
        server.putInPlace();
        m_done.append(
            u"%1 in der Datenbank \"%2\" auf dem Server angelegt."_s.arg(loaded.join(u" und "_s), name));
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
    const platform::DatabaseSettings m_settings;
    QStringList m_done;
};

} // namespace

QStringList installDatabases(const QString& appFolder, const InstallOptions& options) {
    return Installation(appFolder, options).run();
}

} // namespace install
