#pragma once
#include "common/Value.h"
#include "orders/WorkingOrder.h"
#include "platform/Dialogs.h"
#include "platform/Navigation.h"
#include <QString>
#include <optional>
#include <vector>

/// Catalogue, booking and loading of the order screen. Everything reads and writes through RsMain and
/// RsSecond.
namespace modAuftragswesenAuftragserfassung {

struct Kategorie {
    qint64 lng_ID;
    QString txt_ProduktGruppe;
};

/// The tabs of the catalogue.
std::vector<Kategorie> LoadKategorien();
/// Query of ProdukteGrid: lng_ID, txt_Kurzzeichen of a category's active products; without a category none.
QString ProdukteSql(std::optional<qint64> kategorie, int preisGruppe);
/// Query of ExtrasGrid: lng_ID, txt_Extra of the active extras that a product offers.
QString ExtrasSql(qint64 produktId);

/// Percentage of a VAT code: 0 the first rate, 1 the second, 2 tax-free; 0 for any other code.
double GetMWStSatz(const common::Value& code);

/// What a click on cmdSave leads to.
enum class SaveDecision {
    KeineTelefonNummer,     ///< "Geben Sie zuerst eine Telefon Nummer ein."
    KeinLieferdatum,        ///< empty delivery date on any order
    FrageVorbestellung,     ///< ask, then decide again with the answer
    UngueltigesLieferdatum, ///< pre-order without a readable delivery date
    LieferdatumVergangen,   ///< pre-order for a day that is past
    Vorbestellung,          ///< store as pre-order
    KeinKurier,             ///< order without a courier
    Bestellung,             ///< book
};
/// `vorbestellung` is the answer to FrageVorbestellung, once it was asked.
SaveDecision DecideSave(const orders::WorkingOrder& order, std::optional<bool> vorbestellung = {});

/// Whether the user may change and delete booked orders: with users that log in the settings can leave that
/// to administrators.
bool MayChangeBooked();
/// With that right cmdVerwaltungSave acts on booked numbers and on the next one, cmdVerwaltungDelete on
/// booked ones only.
bool MayUpdate(const orders::WorkingOrder& order);
bool MayDelete(const orders::WorkingOrder& order);

/// Books the order under the next number, head and lines in one transaction, and gives the number. Nothing
/// when none could be found: then the message was shown and the program is ending.
std::optional<qint64> SaveBestellung(const orders::WorkingOrder& order, platform::Dialogs& dialogs,
                                     platform::Navigation& navigation);
/// Writes the order anew under the same number, in one transaction. Throws store::Overtaken, as
/// DeleteBestellung does, where it is not as it was loaded any more.
void UpdateBestellung(const orders::WorkingOrder& order, qint64 trxNr);
/// Marks the head as deleted, so that its number stays used, and removes the lines. `kennung` is of the
/// working order that showed it, which is finished thereby.
void DeleteBestellung(qint64 trxNr, const QString& kennung, const store::RowMark& gelesen = {});
/// Clears the order and fills it from the store; without a head of that number the head stays empty.
void LoadBestellung(orders::WorkingOrder& order, qint64 trxNr);

/// What the quick capture box holds.
struct Schnellerfassung {
    QString txt_KundenTelefonnummer, txt_KundenName, txt_KundenVorname, txt_KundenZusatz, txt_KundenStrasse,
        txt_KundenPLZ, txt_KundenOrt;
};

/// `unbekannt` is the number that nobody had when the box opened. False, and nothing saved, where somebody
/// has it by now: another station was faster.
bool SaveKundeSchnellerfassung(const Schnellerfassung& kunde, std::optional<double> unbekannt = {});

} // namespace modAuftragswesenAuftragserfassung
