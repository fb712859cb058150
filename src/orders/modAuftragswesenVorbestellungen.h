#pragma once
#include "orders/WorkingOrder.h"
#include "platform/Navigation.h"
#include "platform/TakeOn.h"
#include <QString>
#include <optional>

/// Orders for a later day. They wait outside the booked orders and all turnover until somebody opens and
/// books them, and stay until somebody deletes them: booking one never does, the firm's practice. Everything
/// reads and writes through RsMain.
namespace modAuftragswesenVorbestellungen {

/// Stores the order, head and lines in one transaction, and gives the pre-order's own number, which is no
/// transaction number. Throws kTypeMismatch for cells that hold no date where one is stored.
qint64 SaveVorbestellung(const orders::WorkingOrder& order);

/// Clears the order and fills it as a coming order that can be booked: under the next transaction number,
/// with the delivery that was agreed; a date or time of it that is damaged is left empty for the clerk to
/// type. Without a head of that number the head stays empty.
void LoadVorbestellung(orders::WorkingOrder& order, qint64 trxNr);
/// LoadVorbestellung, and the order is taken today and now.
void OpenVorbestellung(orders::WorkingOrder& order, qint64 trxNr);

/// Removes head and lines; unlike an order nothing remains.
void DeleteVorbestellung(qint64 trxNr);

// The list: lng_TrxNr, txt_LieferDatum, time_Lieferzeit, lng_KundenID.

/// The pre-orders for a day, given as its whole serial.
QString ListeAmTag(qint64 lieferDatum);
QString ListeAlle();
/// The one of that number.
QString ListeEine(qint64 trxNr);

/// Writes the number of pre-orders to the main window's status box.
void UpdateVorbestellungCount(platform::Navigation& navigation);

/// The first pre-order, the earliest delivery first, whose delivery is at
/// most the settings' lead time ahead, or past. One whose delivery moment cannot be read (nothing stored, or
/// a text that is no date or time) is passed over, so that it does not hide those behind it; and so is one
/// that another station has in hand.
std::optional<qint64> FindFaelligeVorbestellung();
/// What a station has in hand that opens the pre-order. For some minutes the others are not told of it.
platform::Task Aufgabe(qint64 trxNr);
/// The other station that has it in hand; "" where none has.
QString BeiStation(qint64 trxNr);
/// Takes it in hand; where another station has it the user is asked, and false means that he leaves it.
bool TakeOnVorbestellung(qint64 trxNr, platform::Dialogs& dialogs);

/// Name of the customer of a pre-order; "" when it or the customer has gone.
QString KundeVon(qint64 trxNr);
/// Counts the pre-orders and shows the alarm for the first due one.
void CheckVorbestellungAlarm(platform::Navigation& navigation);

} // namespace modAuftragswesenVorbestellungen
