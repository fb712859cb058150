#include "shopserver/OrderPage.h"
#include "common/Convert.h"
#include <QUrl>
#include <array>

using namespace Qt::StringLiterals;

namespace shop {
namespace {

QString html(const QString& text) {
    return text.toHtmlEscaped();
}

QString money(double amount) {
    return u"CHF "_s + common::formatNumber(amount, u"#,##0.00");
}

QString address(const char* folder, const QString& file) {
    return html(QLatin1String(folder) + QString::fromLatin1(QUrl::toPercentEncoding(file)));
}

constexpr char kStyle[] = R"(
*{box-sizing:border-box}
body{margin:0;font:16px/1.5 sans-serif;color:#222;background:#f4f2ef}
header,main,footer{max-width:900px;margin:0 auto}
header img{display:block;width:100%;height:auto}
h1{margin:0;padding:.5rem 1rem;font-size:1.5rem;background:var(--bar);color:var(--text)}
h2{margin:2rem 0 .5rem;padding:.25rem .75rem;font-size:1.15rem;background:var(--bar);color:var(--text)}
main{padding:1rem;background:#fff}
article{display:grid;grid-template-columns:80px 1fr auto 5rem;gap:.25rem 1rem;align-items:start;padding:.75rem 0;border-bottom:1px solid #ddd}
article img{width:80px;height:auto}
article p{margin:0;color:#555}
article details{grid-column:2/-1}
.price{white-space:nowrap;font-weight:bold}
label{display:block}
input,textarea,select{width:100%;padding:.4rem;font:inherit;border:1px solid #999;border-radius:3px}
input[type=checkbox],input[type=radio]{width:auto}
.fields{display:grid;grid-template-columns:1fr 1fr;gap:.75rem 1rem}
.wide{grid-column:1/-1}
button{margin-top:1rem;padding:.75rem 2rem;font:inherit;font-weight:bold;color:var(--text);background:var(--bar);border:0;border-radius:3px;cursor:pointer}
.problems{margin:0 0 1rem;padding:.75rem 1rem .75rem 2rem;border:2px solid #b00;background:#fee}
.note{padding:.75rem 1rem;background:#fff6d6}
table{border-collapse:collapse}
td{padding:.1rem 1.5rem .1rem 0}
footer{padding:1rem;font-size:.9rem}
summary{cursor:pointer}
@media(max-width:600px){article{grid-template-columns:1fr auto 5rem}article img,article .none{display:none}.fields{grid-template-columns:1fr}}
)";

QString frame(const Look& look, const QString& body) {
    QString page =
        u"<!doctype html>\n<html lang=\"de-CH\"><head><meta charset=\"utf-8\">"
        "<meta name=\"viewport\" content=\"width=device-width,initial-scale=1\"><title>%1</title><style>"
        ":root{--bar:#%2;--text:#%3}%4</style></head><body>"_s.arg(html(look.title), look.bar, look.text,
                                                                   QLatin1String(kStyle));
    page += u"<header>"_s;
    if (!look.picture.isEmpty())
        page += u"<img src=\"%1\" alt=\"\">"_s.arg(address("Pictures/", look.picture));
    page += u"<h1>"_s + html(look.title) + u"</h1></header>\n<main>"_s;
    return page + body + u"</body></html>\n"_s;
}

QString input(const OrderForm& form, const QString& label, const QString& name, const QString& more = {}) {
    return u"<label>%1<input name=\"%2\" value=\"%3\" %4></label>"_s.arg(label, name, html(form.value(name)),
                                                                         more);
}

QString extrasOf(const Catalogue& catalogue, const Product& product, const OrderForm& form) {
    const QList<qint64> extras = catalogue.extrasOf.value(product.id);
    if (extras.isEmpty())
        return {};
    QString boxes;
    bool isChosen = false;
    for (const qint64 id : extras) {
        const Extra& extra = *catalogue.extras.constFind(id);
        const QString name = u"x%1-%2"_s.arg(product.id).arg(id);
        isChosen |= form.has(name);
        boxes += u"<label><input type=\"checkbox\" name=\"%1\" value=\"1\"%2> "_s.arg(
                     name, form.has(name) ? u" checked"_s : QString()) +
                 html(extra.name) + u" <span class=\"price\">+ "_s + money(extra.price) +
                 u"</span></label>"_s;
    }
    return u"<details%1><summary>Extras</summary>%2</details>"_s.arg(isChosen ? u" open"_s : QString(),
                                                                     boxes);
}

QString card(const Catalogue& catalogue, const Product& product, const OrderForm& form) {
    QString card = u"<article>"_s;
    if (product.picture.isEmpty()) {
        card += u"<span class=\"none\"></span>"_s;
    } else {
        const QString picture = u"<img src=\"%1\" alt=\"\" loading=\"lazy\">"_s.arg(
            address("ProduktPics/Small/", product.picture));
        card += product.largePicture.isEmpty()
                    ? picture
                    : u"<a href=\"%1\">%2</a>"_s.arg(address("ProduktPics/Large/", product.largePicture),
                                                     picture);
    }
    card +=
        u"<div><strong>"_s + html(product.name) + u"</strong><p>"_s + html(product.text) + u"</p></div>"_s;
    card += u"<span class=\"price\">"_s + money(product.price) + u"</span>"_s;
    const QString name = u"p%1"_s.arg(product.id);
    card +=
        u"<input type=\"number\" name=\"%1\" value=\"%2\" min=\"0\" max=\"99\" aria-label=\"Anzahl %3\">"_s
            .arg(name, html(form.value(name)), html(product.name));
    return card + extrasOf(catalogue, product, form) + u"</article>\n"_s;
}

QString assortment(const Catalogue& catalogue, const OrderForm& form) {
    QString text;
    for (const Category& category : catalogue.categories) {
        QString cards;
        for (const Product& product : catalogue.products)
            if (product.category == category.id)
                cards += card(catalogue, product, form);
        if (!cards.isEmpty())
            text += u"<h2>"_s + html(category.name) + u"</h2>\n"_s + cards;
    }
    return text;
}

QString person(const OrderForm& form, const QDateTime& now) {
    const bool isPickUp = form.value(u"art"_s) == u"abholung";
    const QString form1 =
        u"<h2>Ihre Angaben</h2><div class=\"fields\">"_s +
        input(form, u"Vorname"_s, u"vorname"_s, u"autocomplete=\"given-name\""_s) +
        input(form, u"Name"_s, u"name"_s, u"required autocomplete=\"family-name\""_s) +
        input(form, u"Firma"_s, u"firma"_s, u"autocomplete=\"organization\""_s) +
        input(form, u"Telefon"_s, u"telefon"_s, u"type=\"tel\" required autocomplete=\"tel\""_s) +
        input(form, u"Strasse und Nr."_s, u"strasse"_s, u"autocomplete=\"street-address\""_s) +
        input(form, u"Etage"_s, u"etage"_s) +
        input(form, u"PLZ"_s, u"plz"_s, u"required inputmode=\"numeric\" maxlength=\"5\""_s) +
        input(form, u"Ort"_s, u"ort"_s, u"required"_s) +
        input(form, u"E-Mail"_s, u"email"_s, u"type=\"email\" autocomplete=\"email\""_s);
    const QString range = u"type=\"datetime-local\" min=\"%1\" max=\"%2\""_s.arg(
        now.toString(u"yyyy-MM-dd'T'HH:mm"_s), now.addDays(6).toString(u"yyyy-MM-dd'T'HH:mm"_s));
    return form1 + input(form, u"Wann (leer: so bald wie möglich)"_s, u"zeit"_s, range) +
           u"<div class=\"wide\"><label><input type=\"radio\" name=\"art\" value=\"lieferung\"%1> "
           u"Lieferung</label>"
           "<label><input type=\"radio\" name=\"art\" value=\"abholung\"%2> Abholung</label></div>"_s.arg(
               isPickUp ? QString() : u" checked"_s, isPickUp ? u" checked"_s : QString()) +
           u"<label class=\"wide\">Bemerkungen<textarea name=\"anmerkung\" rows=\"3\" maxlength=\"500\">"_s +
           html(form.value(u"anmerkung"_s)) + u"</textarea></label></div>"_s;
}

QString conditions(const Catalogue& catalogue) {
    static constexpr std::array<const char16_t*, 7> kDays{u"Montag",  u"Dienstag", u"Mittwoch", u"Donnerstag",
                                                          u"Freitag", u"Samstag",  u"Sonntag"};
    QString text = u"<h2>Bestellzeiten</h2><table>"_s;
    for (int day = 1; day <= 7; ++day)
        text += u"<tr><td>%1</td><td>%2</td></tr>"_s.arg(QString::fromUtf16(kDays[size_t(day - 1)]),
                                                         catalogue.times.text(day));
    text += u"</table><p>Abholbereit in %1 Minuten.</p>"_s.arg(catalogue.pickUpMinutes);
    if (catalogue.areas.isEmpty())
        return text;
    text += u"<details><summary>Liefergebiete</summary><table>"_s;
    for (const DeliveryArea& area : catalogue.areas)
        text += u"<tr><td>%1 %2</td><td>ab %3</td><td>%4 Minuten</td></tr>"_s.arg(
            QString::number(area.postcode), html(area.town), money(area.minimum),
            QString::number(area.minutes));
    return text + u"</table></details>"_s;
}

QString footer(const Documents& documents) {
    QString text = u"</main>\n<footer>"_s;
    const std::pair<const char16_t*, const QString&> parts[] = {{u"Kontakt", documents.contact},
                                                                {u"AGB", documents.terms},
                                                                {u"Häufige Fragen", documents.questions},
                                                                {u"Widerrufsrecht", documents.withdrawal},
                                                                {u"Datenschutz", documents.privacy}};
    for (const auto& [title, document] : parts)
        if (!document.trimmed().isEmpty())
            text += u"<details><summary>"_s + QString::fromUtf16(title) + u"</summary><p>"_s + document +
                    u"</p></details>"_s;
    return text + u"</footer>"_s;
}

} // namespace

QByteArray orderPage(const Catalogue& catalogue, const OrderForm& form, const QStringList& problems,
                     const QDateTime& now, const QString& receipt) {
    QString body;
    if (!problems.isEmpty()) {
        body += u"<ul class=\"problems\" role=\"alert\">"_s;
        for (const QString& problem : problems)
            body += u"<li>"_s + html(problem) + u"</li>"_s;
        body += u"</ul>"_s;
    }
    if (!catalogue.documents.news.trimmed().isEmpty())
        body += u"<p>"_s + catalogue.documents.news + u"</p>"_s;
    if (catalogue.closed)
        body += u"<p class=\"note\">Der Online Shop ist zurzeit geschlossen.</p>"_s;
    else if (!catalogue.times.accepts(now))
        body += u"<p class=\"note\">Sofortige Bestellungen nehmen wir nur während der Bestellzeiten an. "
                u"Vorbestellen "
                "können Sie jederzeit.</p>"_s;
    body +=
        u"<form method=\"post\" action=\"Page_Order.asp\"><input type=\"hidden\" name=\"beleg\" value=\"%1\">\n"_s
            .arg(html(receipt));
    body += assortment(catalogue, form);
    if (!catalogue.closed)
        body += person(form, now) + u"<button>Bestellen</button>"_s;
    body += u"</form>"_s + conditions(catalogue) + footer(catalogue.documents);
    return frame(catalogue.look, body).toUtf8();
}

QByteArray thanksPage(const Catalogue& catalogue, qint64 order) {
    return frame(catalogue.look, u"<p>"_s + catalogue.documents.thanks +
                                     u"</p><p>Ihre Bestellung hat die Nummer <strong>%1</strong>.</p>"
                                     "<p><a href=\"Page_Order.asp\">Zurück zum Shop</a></p>"_s.arg(order) +
                                     footer(catalogue.documents))
        .toUtf8();
}

QByteArray emptyPage() {
    return frame({}, u"<p class=\"note\">Der Online Shop ist noch nicht eingerichtet.</p></main>"_s).toUtf8();
}

} // namespace shop
