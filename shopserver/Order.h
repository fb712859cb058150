#pragma once
#include <QDateTime>
#include <QList>
#include <QString>
#include <array>

namespace shop {

struct OrderLine {
    bool isProduct = true;
    qint64 id = 0; ///< of the product, or of the extra
    qint64 quantity = 0;
    QString name;
};

struct Order {
    qint64 id = 0; ///< 0 until it is stored
    QString company, surname, firstName, street, floor, town, phone, email, dispatch, wanted, remarks;
    double total = 0;
    QList<OrderLine> lines;
    /// Tells a page that was sent twice, so that it is one order; "" for none.
    QString receipt;
};

struct OrderText {
    const char* name;
    QString Order::*value;
};

/// The texts of an order in the order of the desk's answer, by the names that they have there.
inline constexpr std::array<OrderText, 11> kOrderTexts{{
    {"FIRMA", &Order::company},
    {"NAME", &Order::surname},
    {"VORNAME", &Order::firstName},
    {"STRASSE", &Order::street},
    {"ETAGE", &Order::floor},
    {"PLZORT", &Order::town},
    {"TELEFON", &Order::phone},
    {"EMAIL", &Order::email},
    {"VERSANDART", &Order::dispatch},
    {"VERSANDZEIT", &Order::wanted},
    {"ANMERKUNG", &Order::remarks},
}};

/// "23. November 2026, so bald wie möglich", or with the time that is wanted.
QString wantedText(const QDateTime& now, const QDateTime& wanted = {});

} // namespace shop
