#include "RawRoads.h"

namespace bench {
namespace {

constexpr double kLineStep = 0.01;
/// As long as an order's identity is.
const QByteArray kIdentity(32, 'f');
constexpr int kLastOrders = 5;

} // namespace

RawRoads::RawRoads(RawStore& store) :
    m_begin(store, "BEGIN IMMEDIATE"), m_commit(store, "COMMIT"),
    m_lastTrxNr(store, "SELECT lng_TrxNr AS LastTrxNr , lng_TrxNr FROM "
                       "tbl_Auftragswesen_Bestellungen_Master ORDER BY lng_TrxNr DESC"),
    m_nextTrxNr(store, "SELECT lng_TrxNr FROM tbl_Auftragswesen_Bestellungen_Master ORDER BY lng_TrxNr DESC"),
    m_findKunde(store, "SELECT lng_ID FROM tbl_Verwaltung_Kunden WHERE dbl_Telefon = ? OR dbl_Natel = ?"),
    m_adresse(store, "SELECT * FROM tbl_Verwaltung_Kunden WHERE lng_ID = ?"),
    m_exists(store, "SELECT * FROM tbl_Verwaltung_Kunden WHERE lng_ID = ?"),
    m_artikel(store,
              "SELECT * FROM view_Verwaltung_Produkte WHERE ( txt_Kurzzeichen >= ? AND txt_Kurzzeichen "
              "<= ? AND txt_Kurzzeichen LIKE ? ) AND lng_Gruppe = ?"),
    m_extras(store,
             "SELECT tbl_Verwaltung_ProdukteExtras . lng_ID , tbl_Verwaltung_ProdukteExtras . txt_Extra "
             "FROM tbl_Verwaltung_ProdukteExtras , tbl_Verwaltung_Produkte_Extras WHERE "
             "tbl_Verwaltung_Produkte_Extras . lng_ProduktID = ? AND tbl_Verwaltung_ProdukteExtras . "
             "lng_ID = tbl_Verwaltung_Produkte_Extras . lng_ProduktExtraID AND "
             "tbl_Verwaltung_ProdukteExtras . flag_Status = 0 ORDER BY tbl_Verwaltung_ProdukteExtras . "
             "lng_Reihenfolge ASC"),
    m_insertHead(
        store, "INSERT INTO \"tbl_Auftragswesen_Bestellungen_Master\" (\"lng_TrxNr\", \"lng_KundenID\", "
               "\"lng_KurierID\", \"lng_BestellDatum\", \"date_BestellDatum\", \"time_BestellZeit\", "
               "\"dbl_BestellDatumNow\", \"time_Lieferzeit\", \"txt_Konditionen\", \"lng_LieferDatum\", "
               "\"txt_LieferDatum\", \"dbl_SummeOhneMWSt\", \"dbl_MWStBetrag\", \"dbl_TotalMitMWSt\") VALUES "
               "(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
    m_insertLine(
        store,
        "INSERT INTO \"tbl_Auftragswesen_Bestellungen_Details\" (\"dbl_TrxNr\", \"lng_TrxNrMaster\", "
        "\"lng_ProduktID\", \"flag_IsProdukt\", \"lng_ExtraID\", \"dbl_Menge\", \"dbl_MengeIntern\", "
        "\"txt_Stückelung\", \"lng_Einheit\", \"txt_Ccy\", \"dbl_PreisMitMWSt\", \"dbl_Rabatt\", "
        "\"dbl_MWStSatz\", \"dbl_PreisOhneMWSt\", \"dbl_BestellZeitDouble\") VALUES (?, ?, ?, ?, ?, ?, "
        "?, ?, ?, ?, ?, ?, ?, ?, ?)"),
    m_finished(store, "INSERT INTO tbl_Auftragswesen_Erledigt ( txt_Kennung ) VALUES ( ? )"),
    m_head(store, "SELECT * FROM tbl_Auftragswesen_Bestellungen_Master WHERE lng_TrxNr = ?"),
    m_kurier(store, "SELECT txt_Kurzzeichen FROM tbl_Verwaltung_Kuriere WHERE lng_ID = ?"),
    m_lines(store, "SELECT * FROM tbl_Auftragswesen_Bestellungen_Details WHERE lng_TrxNrMaster = ?"),
    m_code(store, "SELECT txt_Kurzzeichen FROM tbl_Verwaltung_Produkte WHERE lng_ID = ?"),
    m_produkt(store, "SELECT txt_Produkt FROM tbl_Verwaltung_Produkte WHERE lng_ID = ?"),
    m_extra(store, "SELECT txt_Extra FROM tbl_Verwaltung_ProdukteExtras WHERE lng_ID = ?"),
    m_following(store,
                "SELECT lng_TrxNr FROM tbl_Auftragswesen_Bestellungen_Master WHERE lng_TrxNr > ? ORDER BY "
                "lng_TrxNr"),
    m_ordersOf(store, "SELECT lng_TrxNr , dbl_BestellDatumNow , dbl_TotalMitMWSt FROM "
                      "tbl_Auftragswesen_Bestellungen_Master WHERE lng_KundenID = ? ORDER BY lng_TrxNr DESC"),
    m_linesOf(store,
              "SELECT d . lng_TrxNrMaster , d . flag_IsProdukt , d . dbl_Menge , p . txt_Produkt , e . "
              "txt_Extra FROM tbl_Auftragswesen_Bestellungen_Master AS m JOIN "
              "tbl_Auftragswesen_Bestellungen_Details AS d ON d . lng_TrxNrMaster = m . lng_TrxNr LEFT "
              "JOIN tbl_Verwaltung_Produkte AS p ON p . lng_ID = d . lng_ProduktID LEFT JOIN "
              "tbl_Verwaltung_ProdukteExtras AS e ON e . lng_ID = d . lng_ExtraID WHERE m . "
              "lng_KundenID = ? AND m . lng_TrxNr >= ? ORDER BY d . dbl_TrxNr") {
}

qint64 RawRoads::lastTrxNr() {
    const qint64 number = m_lastTrxNr.step() ? m_lastTrxNr.integer(0) : 0;
    m_lastTrxNr.reset();
    return number;
}

qint64 RawRoads::findKunde(double telefon) {
    m_findKunde.bind(1, telefon);
    m_findKunde.bind(2, telefon);
    const qint64 id = m_findKunde.step() ? m_findKunde.integer(0) : -1;
    m_findKunde.reset();
    return id;
}

void RawRoads::kundeAdresse(qint64 kundenId) {
    m_adresse.bind(1, kundenId);
    if (m_adresse.step()) {
        // Firm, name, first name, street, floor, postcode, town, telephone, mobile number.
        for (const int column : {1, 2, 3, 4, 5, 6, 7, 8})
            take(m_adresse.text(column));
        if (m_adresse.text(8).empty())
            take(m_adresse.text(10));
        if (m_adresse.integer(15) != 0)
            take(m_adresse.text(13));
    }
    m_adresse.reset();
}

void RawRoads::kundeExists(qint64 kundenId) {
    m_exists.bind(1, kundenId);
    take(qint64(m_exists.step()));
    m_exists.reset();
}

void RawRoads::call(double telefon) {
    const qint64 id = m_lastKunde = findKunde(telefon);
    take(lastTrxNr());
    findKunde(telefon);
    kundeAdresse(id);
    take(lastTrxNr());
    kundeExists(id);
    take(lastTrxNr());
    kundeAdresse(id);
    take(lastTrxNr());
}

void RawRoads::lastOrders() {
    m_ordersOf.bind(1, m_lastKunde);
    qint64 oldest = -1;
    // The one behind the last is looked at as well: it could tie with it.
    for (int orders = 0; m_ordersOf.step() && orders < kLastOrders; ++orders) {
        oldest = m_ordersOf.integer(0);
        take(m_ordersOf.real(1));
        take(m_ordersOf.real(2));
    }
    m_ordersOf.reset();
    if (oldest == -1)
        return;
    m_linesOf.bind(1, m_lastKunde);
    m_linesOf.bind(2, oldest);
    while (m_linesOf.step()) {
        take(m_linesOf.integer(0));
        take(m_linesOf.real(2));
        take(m_linesOf.text(m_linesOf.integer(1) != 0 ? 3 : 4));
    }
    m_linesOf.reset();
}

void RawRoads::readArtikel() {
    // Key, short code, name, packaging, unit, price, VAT code.
    m_lastProdukt = m_artikel.integer(0);
    take(m_artikel.text(2));
    take(m_artikel.text(3));
    take(m_artikel.text(5));
    take(m_artikel.integer(6));
    take(m_artikel.real(8));
    take(m_artikel.integer(9));
}

void RawRoads::keyedCode(const Workload::Code& code) {
    m_artikel.bind(1, code.from);
    m_artikel.bind(2, code.upTo);
    m_artikel.bind(3, code.pattern);
    m_artikel.bind(4, qint64(1));
    bool found = false;
    while (m_artikel.step()) {
        const bool exact =
            m_artikel.text(2) == std::string_view(code.from.constData(), size_t(code.from.size()));
        if (!found || exact)
            readArtikel();
        found = true;
        if (exact)
            break;
    }
    m_artikel.reset();
}

void RawRoads::extrasOf(qint64 produktId) {
    m_extras.bind(1, produktId);
    while (m_extras.step()) {
        take(m_extras.integer(0));
        take(m_extras.text(1));
    }
    m_extras.reset();
}

std::vector<RawRoads::Row> RawRoads::readRows(sqlite3* handle, const char* sql, qint64 trxNr) {
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(handle, sql, -1, &statement, nullptr);
    sqlite3_bind_int64(statement, 1, trxNr);
    std::vector<Row> rows;
    while (sqlite3_step(statement) == SQLITE_ROW) {
        Row& row = rows.emplace_back();
        for (int i = 0; i < sqlite3_column_count(statement); ++i) {
            const int type = sqlite3_column_type(statement, i);
            if (type == SQLITE_INTEGER)
                row.emplace_back(qint64(sqlite3_column_int64(statement, i)));
            else if (type == SQLITE_FLOAT)
                row.emplace_back(sqlite3_column_double(statement, i));
            else if (type == SQLITE_TEXT)
                row.emplace_back(
                    QByteArray(reinterpret_cast<const char*>(sqlite3_column_text(statement, i))));
            else
                row.emplace_back(nullptr);
        }
    }
    sqlite3_finalize(statement);
    return rows;
}

void RawRoads::bookLike(sqlite3* handle, qint64 trxNr) {
    m_bookedHead =
        readRows(handle, "SELECT * FROM tbl_Auftragswesen_Bestellungen_Master WHERE lng_TrxNr = ?", trxNr)
            .at(0);
    m_bookedLines = readRows(
        handle, "SELECT * FROM tbl_Auftragswesen_Bestellungen_Details WHERE lng_TrxNrMaster = ?", trxNr);
}

void RawRoads::insert(RawStatement& statement, const Row& row) {
    int position = 0;
    for (const Value& value : row) {
        ++position;
        std::visit([&](const auto& held) { statement.bind(position, held); }, value);
    }
    statement.exec();
}

void RawRoads::book() {
    m_begin.exec();
    m_nextTrxNr.step();
    const qint64 trxNr = m_nextTrxNr.integer(0) + 1;
    m_nextTrxNr.reset();
    m_bookedHead[0] = trxNr;
    insert(m_insertHead, m_bookedHead);
    for (size_t i = 0; i < m_bookedLines.size(); ++i) {
        m_bookedLines[i][0] = double(trxNr) + double(i + 1) * kLineStep;
        m_bookedLines[i][1] = trxNr;
        insert(m_insertLine, m_bookedLines[i]);
    }
    m_finished.bind(1, kIdentity);
    m_finished.exec();
    m_commit.exec();
}

void RawRoads::kurier(qint64 kurierId) {
    nameOf(m_kurier, kurierId);
}

void RawRoads::nameOf(RawStatement& statement, qint64 key) {
    statement.bind(1, key);
    if (statement.step())
        take(statement.text(0));
    statement.reset();
}

void RawRoads::readLine() {
    // Number, its head, quantities, packaging, unit, currency, amounts; the place in the order first.
    take(m_lines.real(0) - double(m_lines.integer(1)));
    m_read.push_back({m_lines.integer(3) != 0, m_lines.integer(2), m_lines.integer(4)});
    for (const int column : {5, 6, 10, 11, 12, 13})
        take(m_lines.real(column));
    take(m_lines.text(7));
    take(m_lines.integer(8));
    take(m_lines.text(9));
}

void RawRoads::load(qint64 trxNr) {
    take(lastTrxNr());
    m_head.bind(1, trxNr);
    qint64 kundenId = 0;
    qint64 kurierId = 0;
    if (m_head.step()) {
        take(m_head.integer(0));
        kundenId = m_head.integer(1);
        kurierId = m_head.integer(2);
        take(m_head.integer(3));
        take(m_head.integer(9));
        for (const int column : {5, 7, 11, 12, 13})
            take(m_head.real(column));
        take(m_head.text(8));
    }
    m_head.reset();
    kurier(kurierId);
    kundeAdresse(kundenId);
    m_read.clear();
    m_lines.bind(1, trxNr);
    while (m_lines.step())
        readLine();
    m_lines.reset();
    for (const Line& line : m_read) {
        if (line.isProdukt) {
            nameOf(m_code, line.produkt);
            nameOf(m_produkt, line.produkt);
        } else {
            nameOf(m_extra, line.extra);
        }
    }
}

qint64 RawRoads::following(qint64 trxNr) {
    m_following.bind(1, trxNr);
    const qint64 number = m_following.step() ? m_following.integer(0) : -1;
    m_following.reset();
    return number;
}

} // namespace bench
