#pragma once
#include "desks/WebOrder.h"
#include "platform/TakeOn.h"
#include <QString>
#include <optional>
#include <vector>

/// Orders from the web shop. The open ones stand in tbl_WebShop_Bestellungen_Master, a mirror of what the
/// server holds. What the server answers may be anything: an answer that cannot be read throws kTypeMismatch,
/// one that tells an order twice kDuplicateKey.
namespace modInternetBestellungen {

/// Replaces the orders by those of the answer and gives their number; a text without the frame of an answer
/// has none. In one transaction: an answer that cannot be read leaves the orders as they were.
qint64 ParseWebShopBestellungen(const QString& text);

/// What the station has in hand that takes the order over.
platform::Task Aufgabe(qint64 id);
/// How many are open, and how many of them other stations have in hand.
qint64 Offene();
qint64 BeiAnderen();

/// The lines of one order, in the server's order. A text without the frame has none.
std::vector<desks::WebLine> ParseWebShopBestellungDetails(const QString& text);

// The list: lng_ID, txt_Versandzeit, txt_Versandart, dbl_Total, txt_Telefon, txt_Firma, txt_Name,
// txt_Vorname, txt_Strasse, txt_Etage, txt_PLZOrt, txt_EMail, txt_Anmerkungen.

QString ListeAlle();
/// Those whose wanted time, the server's free text, holds the date ("15. Mai 2026").
QString ListeAmTag(double datum);

/// A pre-order as the question names it that leads to its deletion.
struct Vorbestellung {
    QString kunde;
    QString lieferDatum;
};

/// The pre-order whose number is that of the web order: both share their numbers where one is deleted.
std::optional<Vorbestellung> GleicheVorbestellung(qint64 id);
/// Removes the order from the list, and the pre-order of the same number, head and lines.
void DeleteBestellung(qint64 id);

/// The mail that confirms an order.
struct EMailConfo {
    QString betreff, body;
};

/// Nothing where the firm has stored none.
std::optional<EMailConfo> LoadEMailConfo();

} // namespace modInternetBestellungen
