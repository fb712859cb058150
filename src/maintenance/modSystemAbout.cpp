#include "maintenance/modSystemAbout.h"
#include "common/RunTimeError.h"
#include "common/Version.h"
#include "platform/WatchedQuery.h"
#include "platform/net/Endpoints.h"
#include "store/EngineFacts.h"
#include "store/StoreGlobals.h"
#include <QFileInfo>
#include <QRegularExpression>
#include <QSysInfo>

using namespace Qt::StringLiterals;

namespace modSystemAbout {
namespace {

constexpr const char16_t* kMainTables[] = {u"tbl_Auftragswesen_Bestellungen_Master",
                                           u"tbl_Auftragswesen_Bestellungen_Details",
                                           u"tbl_Auftragswesen_Vorbestellungen_Master",
                                           u"tbl_Auftragswesen_Vorbestellungen_Details",
                                           u"tbl_Einstellungen_Benutzer",
                                           u"tbl_Verwaltung_AnruferListe",
                                           u"tbl_Verwaltung_Kunden",
                                           u"tbl_Verwaltung_Kuriere",
                                           u"tbl_Verwaltung_ProdukteKategorien",
                                           u"tbl_Verwaltung_Produkte",
                                           u"tbl_Verwaltung_ProdukteExtras",
                                           u"tbl_PLZ_Verzeichnis",
                                           u"tbl_WebShop_Bestellungen_Master",
                                           u"tbl_WebShop_Bestellungen_Verbucht"};

QString yesNo(const QString& name, bool yes) {
    return name + (yes ? u": ja"_s : u": nein"_s);
}

QStringList system(const Surroundings& around) {
    return QStringList{u"Tavolino "_s + Version(),
                       u"System: %1, %2 %3, %4"_s.arg(QSysInfo::prettyProductName(), QSysInfo::kernelType(),
                                                      QSysInfo::kernelVersion(),
                                                      QSysInfo::currentCpuArchitecture()),
                       u"Anzeige: "_s + around.display} +
           around.libraries;
}

QStringList endpoints(const Surroundings& around) {
    const platform::Endpoints& ends = around.ends;
    return {yesNo(u"Telefon"_s, around.hasTelephone),
            yesNo(u"FtpServer"_s, !ends.strFTPServer.isEmpty()),
            yesNo(u"FtpTls"_s, ends.ftpTls),
            yesNo(u"ShopAdresse"_s, ends.hasShop()),
            yesNo(u"SystemAdresse"_s, ends.hasSystem()),
            yesNo(u"Installation"_s, !ends.installation.isEmpty()),
            yesNo(u"Zertifikat"_s, !ends.certificate.isEmpty()),
            yesNo(u"tavolino.ini fehlerfrei"_s, ends.problem.isEmpty())};
}

QStringList files() {
    QStringList lines;
    for (const QString& name : {u"DBTavolino.mdb"_s, u"DBTavolinoPhone.mdb"_s, u"DB_PRINT_Tavolino.mdb"_s,
                                u"DBOnlineShop.mdb"_s, u"tavolino.log"_s}) {
        const QFileInfo file(store::appPath() + u"/Data/"_s + name);
        lines << (file.exists() ? u"%1: %2 kB"_s.arg(name).arg((file.size() + 1023) / 1024)
                                : name + u": fehlt"_s);
    }
    return lines;
}

/// A table that an older database lacks is told, not stumbled over.
QString countOf(store::Engine& engine, const QString& table) {
    if (engine.columnsOf(table).empty())
        return table + u": fehlt"_s;
    const auto cursor = engine.query(u"SELECT Count(*) AS N FROM "_s + table, false);
    return cursor->next() ? u"%1: %2"_s.arg(table).arg(cursor->value(0).toLong()) : table;
}

QStringList database(store::Connection& connection, const QStringList& tables,
                     const platform::Progress& progress) {
    QStringList lines;
    connection.Read(
        [&](store::Engine& engine) {
            lines << u"Schema: %1"_s.arg(store::schemaVersion(engine));
            for (const QString& table : tables)
                lines << countOf(engine, table);
        },
        platform::waitingWith(progress));
    return lines;
}

/// Only a number of our own is told: what else a line begins with may be anything.
bool isOurs(int number) {
    using namespace common;
    constexpr int kOurs[] = {kTypeMismatch, kFileNotFound,    kDiskFull,        kNotWritable,
                             kNoCurrentRow, kFieldNotFound,   kObjectOpen,      kObjectClosed,
                             kStoreFailure, kPasswordRefused, kSqlFailure,      kDuplicateKey,
                             kTargetExists, kSchemaTooNew,    kPlatformFailure, kOrderDisagrees};
    return std::find(std::begin(kOurs), std::end(kOurs), number) != std::end(kOurs);
}

QStringList lastErrors() {
    constexpr qint64 kTail = 1 << 16;
    constexpr qsizetype kShown = 10;
    static const QRegularExpression error(
        u"^(\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d) (Fehler|Fehler im Hintergrund): (-?\\d{1,10})? ?"_s,
        QRegularExpression::MultilineOption);
    QFile log(store::appPath() + u"/Data/tavolino.log"_s);
    if (!log.open(QIODevice::ReadOnly))
        return {};
    log.seek(qMax<qint64>(0, log.size() - kTail));
    QStringList lines;
    for (auto found = error.globalMatch(QString::fromUtf8(log.readAll())); found.hasNext();) {
        const QRegularExpressionMatch line = found.next();
        lines << u"%1 %2 %3"_s.arg(line.captured(1), line.captured(2),
                                   isOurs(line.captured(3).toInt()) ? line.captured(3) : u"unerwartet"_s);
    }
    return lines.mid(qMax<qsizetype>(0, lines.size() - kShown));
}

QString section(const QString& title, const QStringList& lines) {
    return u"[%1]\n%2\n"_s.arg(title, lines.isEmpty() ? u"-"_s : lines.join(u'\n'));
}

} // namespace

QString Version() {
    return common::kProgramVersion.text();
}

QString Diagnosis(const Surroundings& around, const platform::Progress& progress) {
    QStringList tables;
    for (const char16_t* table : kMainTables)
        tables << QString::fromUtf16(table);
    return QStringList{section(u"Programm"_s, system(around)),
                       section(u"Verbindungen"_s, endpoints(around)),
                       section(u"Dateien"_s, files()),
                       section(u"Hauptdatenbank"_s, database(ConnMain, tables, progress)),
                       section(u"Telefonbuch"_s, database(ConnPhone, {u"tbl_PhoneBook"_s}, progress)),
                       section(u"Letzte Fehler"_s, lastErrors())}
        .join(u'\n');
}

} // namespace modSystemAbout
