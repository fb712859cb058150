#include "install/Moving.h"
#include "common/AtomicFile.h"
#include "common/FileErrors.h"
#include "common/RunTimeError.h"
#include "install/IniFile.h"
#include "install/Schema.h"
#include "platform/DatabaseSettings.h"
#include "store/CreateDatabase.h"
#include "store/MainCopies.h"
#include "store/ServerDatabase.h"
#include "store/SoleHold.h"
#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace install {
namespace {

[[noreturn]] void refuse(const QString& sentence, int number = common::kStoreFailure) {
    throw common::RunTimeError(number, sentence);
}

/// One move: from where, to where, and what was done so far.
class Move {
  public:
    Move(const QString& appFolder, const store::Progress& progress) :
        m_root(appFolder), m_progress(progress),
        m_settings(platform::DatabaseSettings::read(iniFile(appFolder))) {
        if (!m_settings.problem.isEmpty())
            refuse(u"tavolino.ini, Abschnitt [Datenbank]: "_s + m_settings.problem);
        if (m_settings.toldServer.servers.isEmpty())
            refuse(u"tavolino.ini nennt im Abschnitt [Datenbank] keinen Server."_s);
        m_files.append(databaseFiles()[int(Database::Main)]);
        if (m_settings.phoneBookWanted)
            m_files.append(databaseFiles()[int(Database::PhoneBook)]);
    }

    QStringList toServer() {
        store::ServerDatabase server(m_settings.toldServer);
        if (server.state() == store::ServerDatabase::State::Whole)
            refuse(u"Die Datenbank \"%1\" auf dem Server enthält schon die Daten einer Installation."_s.arg(
                       m_settings.toldServer.database),
                   common::kTargetExists);
        std::vector<std::unique_ptr<store::SoleHold>> held;
        for (const DatabaseFile& file : m_files) {
            held.push_back(std::make_unique<store::SoleHold>(connectionOf(file)));
            requireVersion(file, held.back()->engine());
            server.load(held.back()->engine(), file.database, m_progress);
        }
        server.putInPlace();
        setIniValue(m_root.path(), "Datenbank", "Motor", "mariadb");
        return QStringList{
                   u"Die Daten stehen jetzt in der Datenbank \"%1\" auf dem Server; sie wurden nach Zahl und Summe geprüft."_s
                       .arg(m_settings.toldServer.database),
                   u"tavolino.ini: Motor=mariadb."_s} +
               told(u"%1 bleibt, wie sie ist, und wird nicht mehr benutzt."_s);
    }

    QStringList toFiles() {
        for (const DatabaseFile& file : m_files)
            if (QFileInfo::exists(pathOf(file)))
                refuse(u"Die Datei \"%1\" besteht schon. Verschieben Sie sie in einen anderen Ordner."_s.arg(
                           QDir::toNativeSeparators(pathOf(file))),
                       common::kTargetExists);
        store::ServerDatabase server(m_settings.toldServer);
        if (server.state() != store::ServerDatabase::State::Whole)
            refuse(u"Die Datenbank \"%1\" auf dem Server ist keine von Tavolino."_s.arg(
                m_settings.toldServer.database));
        const qint64 writes = server.writes();
        m_root.mkpath(u"Data"_s);
        for (const DatabaseFile& file : m_files)
            copyBeside(file);
        // From now on whoever writes waits, until the files have their names.
        server.lock();
        if (server.writes() != writes)
            giveUpCopies();
        // The main database comes last: with it the installation is whole.
        for (auto file = m_files.crbegin(); file != m_files.crend(); ++file)
            if (const std::error_code error = common::replaceFile(pathOf(*file), unfinished(*file)))
                common::throwFileError(error, pathOf(*file));
        setIniValue(m_root.path(), "Datenbank", "Motor", "datei");
        return told(u"%1 angelegt und nach Zahl und Summe geprüft."_s) +
               QStringList{
                   u"tavolino.ini: Motor=datei."_s,
                   u"Die Datenbank auf dem Server bleibt, wie sie ist. Andere Stationen arbeiten weiter mit ihr, bis auch sie umgestellt sind."_s};
    }

  private:
    QString pathOf(const DatabaseFile& file) const { return m_root.filePath(u"Data/"_s + file.fileName); }

    QString unfinished(const DatabaseFile& file) const { return pathOf(file) + u".neu"_s; }

    QString connectionOf(const DatabaseFile& file) const {
        return u"Data Source=%1;Jet OLEDB:Database Password=%2;"_s.arg(pathOf(file), file.password);
    }

    static void requireVersion(const DatabaseFile& file, const store::Engine& engine) {
        if (file.database == Database::Main && engine.schemaVersion() < store::kSchemaVersion)
            refuse(
                u"%1 ist noch auf dem Stand einer älteren Version. Starten Sie Tavolino einmal, dann beginnen Sie neu."_s
                    .arg(file.fileName));
    }

    QStringList told(const QString& sentence) const {
        QStringList lines;
        for (const DatabaseFile& file : m_files)
            lines.append(sentence.arg(u"Data/"_s + file.fileName));
        return lines;
    }

    void copyBeside(const DatabaseFile& file) const {
        store::removeDatabase(unfinished(file));
        store::ConnectionString target;
        target.path = unfinished(file);
        target.password = file.password;
        store::copyFromServer(m_settings.toldServer, file.database, target, m_progress);
    }

    [[noreturn]] void giveUpCopies() const {
        for (const DatabaseFile& file : m_files)
            store::removeDatabase(unfinished(file));
        refuse(
            u"Während des Umzugs wurde an einer Station gearbeitet. Schliessen Sie Tavolino an allen Stationen und beginnen Sie neu."_s);
    }

    const QDir m_root;
    const store::Progress& m_progress;
    const platform::DatabaseSettings m_settings;
    QVector<DatabaseFile> m_files;
};

} // namespace

QStringList moveInstallation(const QString& appFolder, MoveTo target, const store::Progress& progress) {
    Move move(appFolder, progress);
    return target == MoveTo::Server ? move.toServer() : move.toFiles();
}

} // namespace install
