#include "masterdata/frmGruppenPreise.h"
#include "common/Bounds.h"
#include "common/Convert.h"
#include "platform/form/FieldHelpers.h"
#include "store/SystemSettings.h"
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>

using namespace Qt::StringLiterals;
using masterdata::kPriceGroups;

namespace {

constexpr int kRows = kPriceGroups / 2;
constexpr int kColumns = 4;

QString amountText(const QString& text) {
    return common::formatNumber(common::parseNumber(text).value_or(0), u"0.00");
}

/// Enter leads from one to the next and from the last to the first.
template <typename Fields> void enterRing(const Fields& fields) {
    QList<QWidget*> ring(fields.begin(), fields.end());
    ring << ring.first();
    platform::enterChain(ring);
}

} // namespace

frmGruppenPreise::frmGruppenPreise(QWidget* parent) : QGroupBox(parent) {
    setTitle(tr("Gruppen Preise"));
    auto* grid = new QGridLayout(this);
    grid->setVerticalSpacing(4);
    grid->setColumnMinimumWidth(kColumns, 12);
    const QStringList mwst = masterdata::mwstTexts();
    for (int gruppe = 1; gruppe <= kPriceGroups; ++gruppe)
        addGroup(gruppe, mwst);
    enterRing(m_prices);
    enterRing(m_codes);
}

void frmGruppenPreise::addGroup(int gruppe, const QStringList& mwst) {
    const QString name = tr("Gruppe %1").arg(gruppe);
    const auto named = [gruppe](QWidget* widget, const QString& array) {
        widget->setObjectName(array + u'_' + QString::number(gruppe));
    };
    auto* label = new QLabel(name, this);
    auto* currency = new QLabel(SysCurrency, this);
    auto* price = new QLineEdit(u"0.00"_s, this);
    auto* code = new QComboBox(this);
    named(label, u"lbl_Gruppe"_s);
    named(currency, u"lbl_Ccy"_s);
    named(price, u"txt_Preis"_s);
    named(code, u"combo_MWSt"_s);
    price->setAccessibleName(tr("Preis %1").arg(name));
    price->setAlignment(Qt::AlignRight);
    price->setMinimumWidth(58);
    code->setAccessibleName(tr("MWSt %1").arg(name));
    code->addItems(mwst);
    code->setMinimumWidth(code->sizeHint().width());
    platform::reformatOnLeave(*price, amountText);
    m_prices[size_t(gruppe - 1)] = price;
    m_codes[size_t(gruppe - 1)] = code;

    auto* grid = static_cast<QGridLayout*>(layout());
    const int row = (gruppe - 1) % kRows;
    int column = (gruppe - 1) / kRows * (kColumns + 1);
    for (QWidget* widget : {static_cast<QWidget*>(label), static_cast<QWidget*>(currency),
                            static_cast<QWidget*>(price), static_cast<QWidget*>(code)})
        grid->addWidget(widget, row, column++);
}

void frmGruppenPreise::clear() {
    setPrices({});
}

void frmGruppenPreise::setPrices(const masterdata::GruppenPreise& prices) {
    for (size_t i = 0; i < prices.size(); ++i) {
        m_prices[i]->setText(common::formatNumber(prices[i].dbl_Preis, u"0.00"));
        m_codes[i]->setCurrentIndex(prices[i].lng_MWSt);
    }
}

masterdata::GruppenPreise frmGruppenPreise::prices() const {
    masterdata::GruppenPreise prices;
    for (size_t i = 0; i < prices.size(); ++i)
        prices[i] = {common::parseNumber(m_prices[i]->text()).value_or(0), m_codes[i]->currentIndex()};
    return prices;
}

QLineEdit* frmGruppenPreise::faulty() const {
    const auto found = std::find_if(m_prices.begin(), m_prices.end(), [](const QLineEdit* price) {
        const std::optional<double> amount = common::parseNumber(price->text());
        return !amount || !common::isAmount(*amount);
    });
    return found == m_prices.end() ? nullptr : *found;
}
