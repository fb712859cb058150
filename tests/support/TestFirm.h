#pragma once
#include "store/StoreGlobals.h"
#include <QStringList>
#include <QTemporaryDir>
#include <memory>

namespace test {

class ServerFirm;

/// A small firm in a real installation of its own, opened, with the clock stopped and the settings loaded.
/// Its main database stands where stand() of ServerFirm.h says. One at a time, since the store objects
/// are the program's own. Closes and forgets everything at its end.
class TestFirm {
  public:
    TestFirm();
    ~TestFirm();
    TestFirm(const TestFirm&) = delete;
    TestFirm& operator=(const TestFirm&) = delete;

    QString folder() const { return m_folder.path(); }

    /// Friday, 15 May 2026, at which the clock stands at first; times of day come on top.
    static double day();
    static void setTime(int hour, int minute);

    // Rates: 8.1 (code 0) and 2.6 (code 1). All prices are those of group 1; group 2 costs one franc more.
    static constexpr qint64 kHawaii = 1; ///< "10", 16.50 at 2.6; offers Käsesauce
    static constexpr qint64 kMargherita =
        2;                             ///< "1", 14.00 at 2.6; offers Knoblauch, Käse and an inactive extra
    static constexpr qint64 kWein = 3; ///< "W", 12.00 at 8.1
    static constexpr qint64 kGutschein = 4;  ///< "G", 20.00 without VAT
    static constexpr qint64 kBier = 5;       ///< "O'N5%", 18.00 at 8.1, a pack of 6
    static constexpr qint64 kKaesesauce = 1; ///< "Käsesauce", 1.50 at 2.6
    static constexpr qint64 kKaese = 2;      ///< "Käse", 2.00 at 2.6
    static constexpr qint64 kKnoblauch = 3;  ///< "Knoblauch", free
    static constexpr qint64 kKurierAB = 1;   ///< "AB", the lowest key
    static constexpr qint64 kKurierCD = 2;   ///< "CD", first in the menu
    static constexpr qint64 kAnna = 1;       ///< telephone 0791234567
    static constexpr qint64 kBruno = 2;      ///< mobile 0799999999 only
    static constexpr qint64 kClara = 3;      ///< a telephone number with blanks, so without numeric twin

    /// The rows of a query, the columns divided by "|".
    static QStringList rows(const QString& sql, store::Connection& connection = ConnMain);
    /// The first of them, so the value where one is asked for; "" without a row.
    static QString value(const QString& sql, store::Connection& connection = ConnMain);

    static qint64 count(const QString& table) {
        return value(QStringLiteral("SELECT Count(*) AS N FROM ") + table).toLongLong();
    }

  private:
    QTemporaryDir m_folder;
    std::unique_ptr<ServerFirm> m_onServer;
};

} // namespace test
