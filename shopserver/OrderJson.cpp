#include "shopserver/OrderJson.h"
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace shop {

Order orderOfJson(const QByteArray& json, const QDateTime& now) {
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (!document.isObject())
        throw std::invalid_argument("Keine Bestellung in JSON: " + error.errorString().toStdString());
    const QJsonObject object = document.object();
    Order order;
    order.id = object.value(u"ID"_s).toInteger();
    for (const auto& [name, value] : kOrderTexts)
        order.*value = object.value(QLatin1String(name)).toString();
    if (order.wanted.isEmpty())
        order.wanted = wantedText(now);
    order.total = object.value(u"TOTAL"_s).toDouble();
    const QJsonArray lines = object.value(u"ZEILEN"_s).toArray();
    for (const QJsonValue& line : lines)
        order.lines.append({line[u"ISPRODUKT"_s].toInt(1) == 1, line[u"PRODUKTID"_s].toInteger(),
                            line[u"ANZAHL"_s].toInteger(1), line[u"BEZEICHNUNG"_s].toString()});
    return order;
}

} // namespace shop
