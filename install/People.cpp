#include "install/People.h"
#include "install/Random.h"
#include "install/Resources.h"

namespace install {
namespace {

using namespace Qt::StringLiterals;

constexpr int kNumbers = 1'000'000;
/// Shares no factor with kNumbers: consecutive people get numbers far apart, and none twice.
constexpr qint64 kStride = 379'721;

/// An address of a domain that is reserved for examples.
QString mailOf(const Person& person) {
    QString text = (person.firstName + u'.' + person.name).toLower();
    for (const auto& [from, to] :
         {std::pair(u"ä"_s, u"ae"_s), std::pair(u"ö"_s, u"oe"_s), std::pair(u"ü"_s, u"ue"_s),
          std::pair(u"é"_s, u"e"_s), std::pair(u" "_s, u""_s), std::pair(u"'"_s, u""_s)})
        text.replace(from, to);
    return text + u"@example.com"_s;
}

QString firmOf(Random& random, const Person& person) {
    static const char16_t* const trades[] = {u"Garage",   u"Coiffure", u"Schreinerei", u"Elektro",
                                             u"Treuhand", u"Malerei",  u"Gartenbau",   u"Architektur"};
    return QString::fromUtf16(trades[random.below(8)]) + u' ' + person.name +
           QString::fromUtf16(random.percent(50) ? u" AG" : u" GmbH");
}

QString noteOf(Random& random) {
    static const char16_t* const notes[] = {
        u"Bitte beim Nachbarn läuten.", u"Eingang hinter dem Haus.",      u"Hund im Garten.",
        u"Zahlt immer genau.",          u"Lift defekt, Treppe benützen.", u"Klingel links oben."};
    return random.percent(12) ? QString::fromUtf16(notes[random.below(6)]) : QString();
}

QString floorOf(Random& random) {
    const int floor = random.below(10);
    if (floor > 5)
        return {};
    return floor == 0 ? u"Erdgeschoss"_s : u"%1. Stock"_s.arg(floor);
}

/// The number without its leading zero; nothing for an empty text.
std::optional<double> twinOf(const QString& number) {
    return number.isEmpty() ? std::nullopt : std::optional(number.toDouble());
}

const char* cantonOf(const Place& place) {
    return place.postcode == u"8956" || place.postcode == u"8957" ? "AG" : "ZH";
}

} // namespace

People::People(quint64 seed, char16_t series) :
    m_seed(seed), m_series(series), m_names(resourceTable(u"demo/surnames.csv"_s)),
    m_firstNames(resourceTable(u"demo/firstnames.csv"_s)), m_streets(resourceTable(u"demo/streets.csv"_s)) {
    for (const QStringList& row : resourceTable(u"rows/postcodes.csv"_s)) {
        const Place place{row[0], row[1], row[4] == u"1"};
        (place.delivered ? m_delivered : m_others).append(place);
    }
}

QString People::number(const QString& prefix, int position, qint64 shift) const {
    return prefix + m_series + u"%1"_s.arg((position * kStride + shift) % kNumbers, 6, 10, QChar(u'0'));
}

Person People::person(int position) const {
    Random random(m_seed + quint64(position));
    Person person;
    person.name = m_names[random.favouring(int(m_names.size()))][0];
    person.firstName = m_firstNames[random.favouring(int(m_firstNames.size()))][0];
    person.street = m_streets[random.below(int(m_streets.size()))][0] + u" %1"_s.arg(random.between(1, 98));
    const QVector<Place>& places = random.percent(95) ? m_delivered : m_others;
    person.place = places[random.below(int(places.size()))];
    const int kind = random.below(10);
    if (kind < 7)
        person.telephone = number(u"040"_s, position, 0);
    if (kind >= 4)
        person.mobile = number(u"073"_s, position, kNumbers / 3);
    return person;
}

People customers() {
    return {1'000'000'000, u'5'};
}

People strangers() {
    return {2'000'000'000, u'6'};
}

void writeCustomers(sqlite3* handle, int count, int today) {
    Inserter rows(
        handle, "tbl_Verwaltung_Kunden",
        "lng_ID, txt_Firma, txt_Name, txt_Vorname, txt_Strasse, txt_Etage, txt_PLZ, txt_Ort, txt_Telefon, "
        "dbl_Telefon, txt_Natel, dbl_Natel, txt_EMail, txt_Zusatzinfo, date_Erfasst, flag_Zusatzinfo, "
        "flag_ClientStatus, flag_Newsletter");
    const People people = customers();
    Random random(7);
    for (int i = 0; i < count; ++i) {
        const Person person = people.person(i);
        const QString firm = random.percent(8) ? firmOf(random, person) : QString();
        const QString floor = floorOf(random);
        const QString note = noteOf(random);
        const QString mail = random.percent(40) ? mailOf(person) : QString();
        const int captured = today - random.between(1, 800);
        const int passive = random.percent(3) ? 1 : 0;
        const int newsletter = !mail.isEmpty() && random.percent(60) ? 1 : 0;
        rows.add(i + 1, firm, person.name, person.firstName, person.street, floor, person.place.postcode,
                 person.place.town, person.telephone, twinOf(person.telephone), person.mobile,
                 twinOf(person.mobile), mail, note, captured, note.isEmpty() ? 0 : 1, passive, newsletter);
    }
}

void writePhoneBook(sqlite3* handle, int count, int known) {
    Inserter rows(handle, "tbl_PhoneBook",
                  "txt_Name, txt_Vorname, txt_Strasse, txt_PLZ, txt_Ort, txt_Kanton, txt_Telefon, txt_Natel, "
                  "txt_EMail");
    const People firstOnes = customers();
    const People others = strangers();
    for (int i = 0; i < count; ++i) {
        const Person person = i < known ? firstOnes.person(i) : others.person(i);
        rows.add(person.name, person.firstName, person.street, person.place.postcode, person.place.town,
                 cantonOf(person.place), person.telephone, person.mobile,
                 i % 10 == 0 ? mailOf(person) : QString());
    }
}

} // namespace install
