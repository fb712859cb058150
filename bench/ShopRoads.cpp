#include "ShopRoads.h"
#include "platform/net/CurlFtp.h"
#include "shop/TransferView.h"
#include "shop/modOnlineShopDB.h"
#include "store/StoreGlobals.h"
#include <QFile>
#include <QHash>
#include <QProcess>
#include <QSaveFile>
#include <cstdio>
#include <span>
#include <unistd.h>

namespace bench {

using namespace Qt::StringLiterals;

namespace {

constexpr double kExportAim = 1.5;
/// Nine tenths of the program's speed.
constexpr double kUploadAim = 1.11;
constexpr int kLinks = 20'000;
constexpr qint64 kUploaded = 256 * 1024 * 1024;

/// A table of the shop: what is read, and what is written of each row.
struct Copied {
    const char *select, *insert;
};

constexpr Copied kCopied[] = {
    {"SELECT lng_Abholzeit FROM tbl_OnlineShop_Lieferzeiten", "INSERT INTO tblAbholung VALUES (?)"},
    {"SELECT lng_LastOrder FROM tbl_OnlineShop_Lieferzeiten", "INSERT INTO tblLastOrder VALUES (?)"},
    {"SELECT lng_ShopStatus, txt_EMailAdresse FROM tbl_OnlineShop_Lieferzeiten",
     "INSERT INTO tblShopStatus VALUES (?, ?)"},
    {"SELECT lng_ID, txt_Produkt, lng_ProduktGruppe, dbl_Preis, lng_Reihenfolge, txt_Beschreibung, "
     "txt_Beschreibung, CASE WHEN flag_InternetBilder THEN coalesce(txt_BildKlein, '') ELSE '' END, "
     "CASE WHEN flag_InternetBilder THEN coalesce(txt_BildGross, '') ELSE '' END "
     "FROM view_Verwaltung_Produkte WHERE lng_Gruppe = 1 AND flag_InternetPreis <> 0",
     "INSERT INTO tblArtikel VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)"},
    {"SELECT * FROM tbl_OnlineShop_Bestellzeiten ORDER BY lngWochentag",
     "INSERT INTO tblBestellzeiten VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"},
    {"SELECT lng_ID, txt_BalkenfarbeHEX, txt_SchriftfarbeHEX, txt_Hintergrundbild, txt_ShopTitel "
     "FROM tbl_OnlineShop_CorporateIdentity ORDER BY lng_ID",
     "INSERT INTO tblCorpprateIdentity VALUES (?, ?, ?, ?, ?)"},
    {"SELECT lng_ID, txt_DokumenteAGB, txt_DokumenteKontakt, txt_DokumenteFAQ, txt_DokumenteWiderspruch, "
     "txt_DokumenteDatenschutz, txt_News, txt_BestellungDanke FROM tbl_OnlineShop_Dokumente WHERE lng_ID = 1",
     "INSERT INTO tblDokumente VALUES (?, ?, ?, ?, ?, ?, ?, ?)"},
    {"SELECT lng_ID, txt_ProduktGruppe, lng_Reihenfolge FROM tbl_Verwaltung_ProdukteKategorien "
     "WHERE flag_Internet <> 0",
     "INSERT INTO tblGruppe VALUES (?, ?, ?)"},
    {"SELECT lng_PLZ, txt_Ort, dbl_Mindestbestellmenge, lng_Lieferzeiten FROM tbl_PLZ_Verzeichnis "
     "WHERE bool_Liefergebiet <> 0",
     "INSERT INTO tblLieferbedingungen VALUES (?, ?, ?, ?)"},
    {"SELECT lng_ID, txt_Extra, dbl_Preis, lng_Reihenfolge FROM view_Verwaltung_ProdukteExtras "
     "WHERE lng_Gruppe = 1 AND flag_Status = 0",
     "INSERT INTO tblZusatz VALUES (?, ?, ?, ?)"},
    {"SELECT lng_ID, lng_ProduktID, lng_ProduktExtraID FROM tbl_Verwaltung_Produkte_Extras",
     "INSERT INTO tblZusatzGruppe VALUES (?, ?, ?)"}};

constexpr const char* kEmptied[] = {"tblAbholung",  "tblArtikel",     "tblBestellzeiten",
                                    "tblDokumente", "tblGruppe",      "tblCorpprateIdentity",
                                    "tblLastOrder", "tblShopStatus",  "tblLieferbedingungen",
                                    "tblZusatz",    "tblZusatzGruppe"};

/// Asked once an extra, as Tavolino does.
class ExtraLookup {
  public:
    explicit ExtraLookup(RawStore& store) :
        m_extra(store, "SELECT flag_Internet FROM tbl_Verwaltung_ProdukteExtras WHERE lng_ID = ?") {}

    bool isForInternet(qint64 extra) {
        const auto known = m_known.constFind(extra);
        if (known != m_known.constEnd())
            return *known;
        m_extra.bind(1, extra);
        const bool isFor = !m_extra.step() || m_extra.integer(0) != 0;
        m_extra.reset();
        return *m_known.insert(extra, isFor);
    }

  private:
    RawStatement m_extra;
    QHash<qint64, bool> m_known;
};

void copyTable(RawStore& from, RawStore& to, const Copied& table, ExtraLookup* extras) {
    RawStatement select(from, table.select);
    RawStatement insert(to, table.insert);
    while (select.step()) {
        if (extras && !extras->isForInternet(select.integer(2)))
            continue;
        for (int column = 0; column < select.columns(); ++column)
            insert.bind(column + 1, select, column);
        insert.exec();
    }
}

void syncAndRename(const QString& from, const QString& to) {
    QFile file(from);
    if (!file.open(QIODevice::ReadOnly) || ::fsync(file.handle()) != 0 ||
        std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) != 0)
        qFatal("%s cannot be put in place", qPrintable(from));
}

} // namespace

ShopRoads::ShopRoads(const QString& folder, RawStore& store) :
    m_store(store), m_shop(folder + u"/comparison-shop.db"_s), m_server(m_folder.path()) {
    if (!QFile::exists(m_shop) && !QFile::copy(modOnlineShopDB::DatabaseFile(), m_shop))
        qFatal("%s cannot be made", qPrintable(m_shop));
}

ShopRoads::~ShopRoads() {
    if (m_added)
        run(u"DELETE FROM tbl_Verwaltung_Produkte_Extras WHERE lng_ProduktExtraID > 1000"_s);
}

void ShopRoads::run(const QString& sql) {
    ConnMain.Execute(sql);
    m_store.run(sql.toUtf8().constData());
}

void ShopRoads::addLinks() {
    if (std::exchange(m_added, true))
        return;
    store::Recordset rows;
    rows.Open(u"SELECT Count(*) AS N FROM tbl_Verwaltung_Produkte_Extras"_s, ConnMain,
              store::adOpenForwardOnly, store::adLockReadOnly);
    const qint64 missing = kLinks - rows.Fields(u"N").toLong();
    rows.Close();
    // To extras that are not there, which count as such of the shop.
    run(u"WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i + 1 < %1) INSERT INTO "
        "tbl_Verwaltung_Produkte_Extras (lng_ProduktID, lng_ProduktExtraID) SELECT i % 2000 + 1, 1001 + i % "
        "100 FROM n"_s.arg(missing));
}

void ShopRoads::rawExport() {
    {
        RawStore shop(m_shop);
        shop.run("BEGIN IMMEDIATE");
        for (const char* table : kEmptied)
            shop.run((QByteArray("DELETE FROM ") + table).constData());
        ExtraLookup extras(m_store);
        for (const Copied& table : kCopied)
            copyTable(m_store, shop, table, &table == &kCopied[std::size(kCopied) - 1] ? &extras : nullptr);
        shop.run("COMMIT");
    }
    const QString clean = m_shop + u".clean"_s;
    QFile::remove(clean);
    {
        RawStore shop(m_shop);
        shop.run((u"VACUUM INTO '"_s + clean + u'\'').toUtf8().constData());
    }
    syncAndRename(clean, m_shop);
}

void ShopRoads::upload() {
    platform::Endpoints ends;
    ends.strFTPServer = u"127.0.0.1"_s;
    ends.lngFTPPort = m_server.port();
    ends.strFTPUser = u"pizzeria"_s;
    ends.strFTPPassword = test::FtpServer::kPassword.toString();
    ends.ftpTls = false;
    platform::CurlFtp ftp;
    if (ftp.Connect(ends) != 0 || ftp.PutFile(m_folder.filePath(u"large"_s), u"ours"_s) != 0)
        qFatal("upload: %s", qPrintable(ftp.Detail()));
    ftp.Close();
}

void ShopRoads::curlUpload() const {
    const int result = QProcess::execute(u"curl"_s, {u"--silent"_s, u"--noproxy"_s, u"*"_s, u"--user"_s,
                                                     u"pizzeria:"_s + test::FtpServer::kPassword.toString(),
                                                     u"--upload-file"_s, m_folder.filePath(u"large"_s),
                                                     u"ftp://127.0.0.1:%1/curl"_s.arg(m_server.port())});
    if (result != 0)
        qFatal("curl ends with %d", result);
}

std::vector<Road> ShopRoads::roads() {
    m_server.start();
    QFile large(m_folder.filePath(u"large"_s));
    if (!large.open(QIODevice::WriteOnly) || !large.resize(kUploaded))
        qFatal("no file to upload");
    return {{"Shop: catalogue exported and compacted", 1,
             [this](size_t) {
                 addLinks();
                 shop::TransferView view;
                 modOnlineShopDB::CreateOnlineShopDB(view, m_services.dialogs);
             },
             [this](size_t) { rawExport(); }, kExportAim},
            {"Shop: 256 MB uploaded, beside curl", 1, [this](size_t) { upload(); },
             [this](size_t) { curlUpload(); }, kUploadAim}};
}

} // namespace bench
