#include "shopserver/DeskAnswer.h"
#include "shopserver/PlainText.h"

using namespace Qt::StringLiterals;

namespace shop {
namespace {

void addTag(QByteArray& answer, const char* name, const QByteArray& value) {
    answer.append('<').append(name).append('>').append(value).append("</").append(name).append('>');
}

QByteArray plain(QString text) {
    return withoutControls(text.replace(u'<', u'‹').replace(u'>', u'›')).toUtf8();
}

template <typename Record, typename Fields>
QByteArray answerOf(const QList<Record>& records, Fields addFields) {
    QByteArray answer = "<BESTELLUNGEN>";
    for (const Record& record : records) {
        answer += "<RECORD>";
        addFields(answer, record);
        answer += "</RECORD>";
    }
    return answer + "</BESTELLUNGEN>";
}

} // namespace

QByteArray headsAnswer(const QList<Order>& orders) {
    return answerOf(orders, [](QByteArray& answer, const Order& order) {
        addTag(answer, "ID", QByteArray::number(order.id));
        for (const OrderText& text : kOrderTexts)
            addTag(answer, text.name, plain(order.*text.value));
        addTag(answer, "TOTAL", QByteArray::number(order.total, 'f', 2));
    });
}

QByteArray linesAnswer(const QList<OrderLine>& lines) {
    return answerOf(lines, [](QByteArray& answer, const OrderLine& line) {
        addTag(answer, "ISPRODUKT", line.isProduct ? "1" : "0");
        addTag(answer, "PRODUKTID", QByteArray::number(line.id));
        addTag(answer, "ANZAHL", QByteArray::number(line.quantity));
        addTag(answer, "BEZEICHNUNG", plain(line.name));
    });
}

} // namespace shop
