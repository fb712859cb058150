#include "shopserver/OrderForm.h"
#include "common/Convert.h"
#include "common/modFunctions.h"
#include <QRegularExpression>
#include <cmath>

using namespace Qt::StringLiterals;

namespace shop {
namespace {

constexpr int kMostFields = 5000;
constexpr int kMostQuantity = 99;
constexpr int kMostLines = 100;
constexpr int kMostLetters = 80;
constexpr int kMostLettersOfRemarks = 500;
constexpr int kMostDaysAhead = 6;

QString decoded(QByteArray bytes) {
    QString text = QString::fromUtf8(QByteArray::fromPercentEncoding(bytes.replace('+', ' ')));
    text.replace(u"\r\n"_s, u"\n"_s);
    for (QChar& c : text)
        if (c.category() == QChar::Other_Control && c != u'\n')
            c = u' ';
    return text.trimmed();
}

qint64 rappen(double amount) {
    return std::llround(amount * 100);
}

} // namespace

OrderForm::OrderForm(const QByteArray& body) {
    for (const QByteArray& field : body.split('&')) {
        if (m_values.size() == kMostFields)
            return;
        const qsizetype equals = field.indexOf('=');
        if (equals > 0)
            m_values.insert(decoded(field.left(equals)), decoded(field.mid(equals + 1)));
    }
}

Order OrderForm::order(const Catalogue& catalogue, const QDateTime& now, QStringList& problems) const {
    Order order;
    if (catalogue.closed)
        problems << u"Der Online Shop ist zurzeit geschlossen."_s;
    readLines(catalogue, order, problems);
    readPerson(order, problems);
    readDispatch(catalogue, now, order, problems);
    return order;
}

void OrderForm::readPerson(Order& order, QStringList& problems) const {
    for (const auto& [name, text] : kOrderTexts) {
        const QString typed = value(QString::fromLatin1(name).toLower());
        const bool isRemarks = text == &Order::remarks;
        order.*text = isRemarks ? typed : QString(typed).replace(u'\n', u' ');
        if (typed.size() > (isRemarks ? kMostLettersOfRemarks : kMostLetters))
            problems << u"Eine Ihrer Angaben ist zu lang: %1…"_s.arg(typed.left(20));
    }
    if (order.surname.isEmpty())
        problems << u"Bitte geben Sie Ihren Namen an."_s;
    static const QRegularExpression phone(u"^\\+?[0-9 /()'.-]{9,25}$"_s);
    if (!phone.match(order.phone).hasMatch())
        problems << u"Bitte geben Sie Ihre Telefonnummer an, unter der wir zurückrufen können."_s;
    QString fault;
    if (!order.email.isEmpty() &&
        (order.email.contains(u';') || !modFunctions::IsValidEmailAddress(order.email, fault)))
        problems << u"Die E-Mail Adresse ist ungültig."_s;
}

void OrderForm::readLines(const Catalogue& catalogue, Order& order, QStringList& problems) const {
    qint64 total = 0;
    bool isImpossible = false;
    const auto add = [&](bool isProduct, qint64 id, qint64 quantity, const QString& name, double price) {
        order.lines.append({isProduct, id, quantity, name});
        total += rappen(price) * quantity;
    };
    for (const Product& product : catalogue.products) {
        const QString typed = value(u"p%1"_s.arg(product.id));
        if (typed.isEmpty() || typed == u"0")
            continue;
        bool isNumber = false;
        const int quantity = typed.toInt(&isNumber);
        if (!isNumber || quantity < 1 || quantity > kMostQuantity) {
            isImpossible = true;
            continue;
        }
        add(true, product.id, quantity, product.name, product.price);
        for (const qint64 extra : catalogue.extrasOf.value(product.id))
            if (has(u"x%1-%2"_s.arg(product.id).arg(extra)))
                add(false, extra, quantity, catalogue.extras[extra].name, catalogue.extras[extra].price);
    }
    if (isImpossible)
        problems << u"Eine Menge ist eine ganze Zahl von 1 bis %1."_s.arg(kMostQuantity);
    else if (order.lines.isEmpty())
        problems << u"Bitte wählen Sie mindestens ein Produkt."_s;
    if (order.lines.size() > kMostLines)
        problems
            << u"Das sind mehr Positionen, als wir auf einmal ausführen können. Bitte rufen Sie uns an."_s;
    order.total = double(total) / 100;
}

void OrderForm::readDispatch(const Catalogue& catalogue, const QDateTime& now, Order& order,
                             QStringList& problems) const {
    const bool isDelivery = value(u"art"_s) != u"abholung";
    order.dispatch = isDelivery ? u"Lieferung"_s : u"Abholung"_s;
    const QString postcode = value(u"plz"_s);
    static const QRegularExpression digits(u"^[0-9]{4,5}$"_s);
    const QString town = value(u"ort"_s).left(kMostLetters).replace(u'\n', u' ');
    if (!digits.match(postcode).hasMatch() || town.isEmpty())
        problems << u"Bitte geben Sie PLZ und Ort an."_s;
    order.town = postcode.left(5) + u' ' + town;

    int minutes = catalogue.pickUpMinutes;
    if (isDelivery) {
        if (order.street.isEmpty())
            problems << u"Bitte geben Sie Strasse und Hausnummer an."_s;
        if (const DeliveryArea* const area = catalogue.area(postcode.toInt(), town)) {
            minutes = area->minutes;
            if (rappen(order.total) < rappen(area->minimum))
                problems << u"Nach %1 %2 liefern wir ab CHF %3."_s.arg(
                    postcode, town, common::formatNumber(area->minimum, u"0.00"));
        } else {
            problems << u"Nach %1 %2 liefern wir leider nicht. Sie können Ihre Bestellung abholen."_s.arg(
                postcode, town);
        }
    }

    const QString typed = value(u"zeit"_s);
    const QDateTime wanted = QDateTime::fromString(typed, u"yyyy-MM-dd'T'HH:mm"_s);
    order.wanted = wantedText(now, wanted);
    if (typed.isEmpty()) {
        if (!catalogue.times.accepts(now))
            problems
                << u"Wir nehmen jetzt keine sofortigen Bestellungen an. Bitte wählen Sie eine Zeit innerhalb "
                   "der Bestellzeiten."_s;
    } else if (!wanted.isValid() || wanted > now.addDays(kMostDaysAhead) ||
               !catalogue.times.accepts(wanted)) {
        problems << u"Bitte wählen Sie eine Zeit innerhalb der Bestellzeiten der nächsten Tage."_s;
    } else if (wanted < now.addSecs(minutes * 60 - 59)) {
        problems << u"Wir brauchen mindestens %1 Minuten. Bitte wählen Sie eine spätere Zeit."_s.arg(minutes);
    }
}

} // namespace shop
