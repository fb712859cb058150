#include "shopserver/CatalogueReader.h"
#include "store/Collation.h"
#include <QSet>
#include <SQLiteCpp/SQLiteCpp.h>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <sqlite3.h>

namespace shop {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int kMostRows = 50'000;
constexpr int kMostBytesOfText = 1 << 20;
constexpr auto kMostTime = std::chrono::seconds(10);
constexpr int kHeader = 100;

int collate(void*, int aSize, const void* a, int bSize, const void* b) noexcept {
    return store::compareTexts({static_cast<const char*>(a), size_t(aSize)},
                               {static_cast<const char*>(b), size_t(bSize)});
}

int isLate(void* deadline) noexcept {
    return Clock::now() > *static_cast<const Clock::time_point*>(deadline);
}

class Reader {
  public:
    explicit Reader(QByteArray& file) : m_database(":memory:") {
        sqlite3* const handle = m_database.getHandle();
        sqlite3_db_config(handle, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
        sqlite3_db_config(handle, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
        sqlite3_db_config(handle, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
        sqlite3_limit(handle, SQLITE_LIMIT_LENGTH, kMostBytesOfText);
        sqlite3_progress_handler(handle, 10'000, isLate, &m_deadline);
        sqlite3_create_collation(handle, store::kCollationName, SQLITE_UTF8, nullptr, collate);
        // A file that once had a write-ahead log says so in its header, and memory has none.
        file[18] = file[19] = 1;
        sqlite3_deserialize(handle, "main", reinterpret_cast<unsigned char*>(file.data()), file.size(),
                            file.size(), SQLITE_DESERIALIZE_READONLY);
        if (std::string(m_database.execAndGet("PRAGMA quick_check(1)").getText()) != "ok")
            throw CatalogueError("Die Datenbank ist beschädigt.");
    }

    template <typename Row> void each(const char* sql, Row row) {
        SQLite::Statement query(m_database, sql);
        for (int rows = 0; query.executeStep(); ++rows) {
            if (rows == kMostRows)
                throw CatalogueError("Der Katalog ist zu gross.");
            row(query);
        }
    }

  private:
    Clock::time_point m_deadline = Clock::now() + kMostTime;
    SQLite::Database m_database;
};

/// The last page of a file that was cut may be one that nothing points to.
bool isWhole(const QByteArray& file) {
    const auto number = [&](int at, int bytes) {
        qint64 value = 0;
        for (int i = 0; i < bytes; ++i)
            value = value << 8 | uchar(file[at + i]);
        return value;
    };
    const qint64 pageSize = number(16, 2) == 1 ? 65536 : number(16, 2);
    return file.size() >= pageSize * number(28, 4);
}

QString text(SQLite::Statement& row, int column) {
    const SQLite::Column value = row.getColumn(column);
    return QString::fromUtf8(value.getText(), value.getBytes());
}

double amount(SQLite::Statement& row, int column) {
    const double value = row.getColumn(column).getDouble();
    if (!(std::abs(value) < 1e6))
        throw CatalogueError("Der Katalog enthält einen unmöglichen Betrag.");
    return value;
}

int minutes(SQLite::Statement& row, int column) {
    return int(qBound(0, row.getColumn(column).getInt(), 24 * 60));
}

OrderTimes::Period period(SQLite::Statement& row, int first) {
    const auto timeOfDay = [&](int column) {
        const int hours = qBound(0, row.getColumn(column).getInt(), 23);
        return hours * 60 + qBound(0, row.getColumn(column + 1).getInt(), 59);
    };
    return {row.getColumn(first).getInt() != 0, timeOfDay(first + 1), timeOfDay(first + 3)};
}

void readTimes(Reader& reader, Catalogue& catalogue) {
    reader.each("SELECT lngShopStatus FROM tblShopStatus LIMIT 1",
                [&](auto& row) { catalogue.closed = row.getColumn(0).getInt() != 0; });
    reader.each("SELECT lngLieferzeit FROM tblAbholung LIMIT 1",
                [&](auto& row) { catalogue.pickUpMinutes = minutes(row, 0); });
    reader.each("SELECT lngLieferzeit FROM tblLastOrder LIMIT 1",
                [&](auto& row) { catalogue.times.setLastOrderMinutes(minutes(row, 0)); });
    reader.each("SELECT lngWochentag, lngMittagGeschlossen, lngMittagVonStunden, lngMittagVonMinuten,"
                " lngMittagBisStunden, lngMittagBisMinuten, lngAbendGeschlossen, lngAbendVonStunden,"
                " lngAbendVonMinuten, lngAbendBisStunden, lngAbendBisMinuten FROM tblBestellzeiten",
                [&](auto& row) {
                    const int weekday = row.getColumn(0).getInt();
                    catalogue.times.set(weekday, OrderTimes::Midday, period(row, 1));
                    catalogue.times.set(weekday, OrderTimes::Evening, period(row, 6));
                });
    reader.each("SELECT lngPLZ, strOrt, dblMindestbestellmenge, dblLieferzeit FROM tblLieferbedingungen"
                " ORDER BY lngPLZ, strOrt",
                [&](auto& row) {
                    catalogue.areas.append(
                        {row.getColumn(0).getInt64(), text(row, 1), amount(row, 2), minutes(row, 3)});
                });
}

bool isColour(const QString& colour) {
    return colour.size() == 6 && std::ranges::all_of(colour, [](QChar c) {
               return c.unicode() < 0x80 && std::isxdigit(c.unicode());
           });
}

void readLook(Reader& reader, Catalogue& catalogue) {
    reader.each("SELECT strBalkenfarbe, strSchriftfarbe, strHintergrundbild, strShopTitel"
                " FROM tblCorpprateIdentity WHERE lng_ID = 1",
                [&](auto& row) {
                    if (isColour(text(row, 0)))
                        catalogue.look.bar = text(row, 0);
                    if (isColour(text(row, 1)))
                        catalogue.look.text = text(row, 1);
                    catalogue.look.picture = text(row, 2);
                    catalogue.look.title = text(row, 3);
                });
    reader.each("SELECT strAGB, strKontakt, strFAQ, strWiderspruchsrecht, strDatenschutz, strNews,"
                " strBestellungDanke FROM tblDokumente WHERE ID = 1",
                [&](auto& row) {
                    catalogue.documents = {text(row, 0), text(row, 1), text(row, 2), text(row, 3),
                                           text(row, 4), text(row, 5), text(row, 6)};
                });
}

void readProducts(Reader& reader, Catalogue& catalogue) {
    reader.each("SELECT ID, strArtikelGruppe FROM tblGruppe ORDER BY lngOrder, ID", [&](auto& row) {
        catalogue.categories.append({row.getColumn(0).getInt64(), text(row, 1)});
    });
    QSet<qint64> categories;
    for (const Category& category : catalogue.categories)
        categories.insert(category.id);
    reader.each("SELECT ID, strArtikelName, lngArtikelGruppe, dblPreis, strBeschreibung, strPics,"
                " strPicsLarge FROM tblArtikel ORDER BY lngOrder, ID",
                [&](auto& row) {
                    const Product product{row.getColumn(0).getInt64(),
                                          text(row, 1),
                                          row.getColumn(2).getInt64(),
                                          amount(row, 3),
                                          text(row, 4),
                                          text(row, 5),
                                          text(row, 6)};
                    if (categories.contains(product.category))
                        catalogue.products.append(product);
                });
    reader.each("SELECT ID, strZusatzName, dblPreis FROM tblZusatz", [&](auto& row) {
        catalogue.extras.insert(row.getColumn(0).getInt64(), {text(row, 1), amount(row, 2)});
    });
    reader.each("SELECT DISTINCT lngArtikel, lngZusatz FROM tblZusatzGruppe JOIN tblZusatz ON tblZusatz.ID ="
                " lngZusatz ORDER BY lngOrder, lngZusatz",
                [&](auto& row) {
                    catalogue.extrasOf[row.getColumn(0).getInt64()].append(row.getColumn(1).getInt64());
                });
}

} // namespace

Catalogue readCatalogue(QByteArray file) {
    if (file.size() < kHeader || !file.startsWith("SQLite format 3"))
        throw CatalogueError("Die Datei ist keine Datenbank.");
    if (!isWhole(file))
        throw CatalogueError("Die Datenbank ist nicht ganz angekommen.");
    try {
        Reader reader(file);
        Catalogue catalogue;
        readTimes(reader, catalogue);
        readLook(reader, catalogue);
        readProducts(reader, catalogue);
        return catalogue;
    } catch (const SQLite::Exception& error) {
        throw CatalogueError(std::string("Die Datenbank kann nicht gelesen werden: ") + error.what());
    }
}

} // namespace shop
