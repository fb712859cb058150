#include "shop/frmOnlineShopSettingsBestellzeiten.h"
#include "common/Convert.h"
#include "common/Guard.h"
#include "platform/Saving.h"
#include "platform/form/FieldHelpers.h"
#include "shop/frmOnlineShopSettings.h"
#include "ui_frmOnlineShopSettingsBestellzeiten.h"
#include <limits>

using namespace modOnlineShopSettingsBestellzeiten;
using namespace Qt::StringLiterals;
using common::connectGuarded;
using common::formatNumber;
using common::Origin;

namespace {

constexpr const char* kTage[] = {QT_TRANSLATE_NOOP("frmOnlineShopSettingsBestellzeiten", "Montag"),
                                 QT_TRANSLATE_NOOP("frmOnlineShopSettingsBestellzeiten", "Dienstag"),
                                 QT_TRANSLATE_NOOP("frmOnlineShopSettingsBestellzeiten", "Mittwoch"),
                                 QT_TRANSLATE_NOOP("frmOnlineShopSettingsBestellzeiten", "Donnerstag"),
                                 QT_TRANSLATE_NOOP("frmOnlineShopSettingsBestellzeiten", "Freitag"),
                                 QT_TRANSLATE_NOOP("frmOnlineShopSettingsBestellzeiten", "Samstag"),
                                 QT_TRANSLATE_NOOP("frmOnlineShopSettingsBestellzeiten", "Sonntag")};

struct ZeitList {
    const char16_t* name;
    const char* spoken;
    const char* before;
    int last, step;
};

constexpr ZeitList kZeiten[] = {
    {u"StundenFrom", QT_TRANSLATE_NOOP("frmOnlineShopSettingsBestellzeiten", "von Stunden"), "", 23, 1},
    {u"MinutenFrom", QT_TRANSLATE_NOOP("frmOnlineShopSettingsBestellzeiten", "von Minuten"), ":", 55, 5},
    {u"StundenTo", QT_TRANSLATE_NOOP("frmOnlineShopSettingsBestellzeiten", "bis Stunden"),
     QT_TRANSLATE_NOOP("frmOnlineShopSettingsBestellzeiten", "bis"), 23, 1},
    {u"MinutenTo", QT_TRANSLATE_NOOP("frmOnlineShopSettingsBestellzeiten", "bis Minuten"), ":", 55, 5}};

/// Widgets of one period: the times with what stands before them, the closed box, and the gap.
constexpr int kPeriodeColumns = 10;

/// A whole number of minutes that can be stored.
std::optional<qint64> minutes(const QString& text) {
    const auto number = common::parseNumber(text);
    constexpr double kMost = std::numeric_limits<qint32>::max();
    return number && std::abs(*number) <= kMost ? std::optional(formatNumber(*number, u"0").toLongLong())
                                                : std::nullopt;
}

} // namespace

frmOnlineShopSettingsBestellzeiten::frmOnlineShopSettingsBestellzeiten(const platform::Services& services,
                                                                       QWidget* parent) :
    QWidget(parent),
    m_services(services), m_ui(std::make_unique<Ui::frmOnlineShopSettingsBestellzeiten>()) {
    m_ui->setupUi(this);
    setUpTage();
    setUpTabs();
    setUpMinuten(*m_ui->txt_Abholzeit, tr("Bitte geben Sie eine gültige Abholzeit ein."));
    setUpMinuten(*m_ui->txt_LastOrder, tr("Bitte geben Sie eine gültige letzte Bestellzeit ein."));
    platform::selectAllOnFocus(*m_ui->txt_EMailAdress);
    platform::enterChain({m_ui->txt_Abholzeit, m_ui->txt_LastOrder, m_ui->txt_EMailAdress, m_ui->cmdSave});
    connectGuarded(Origin::User, m_ui->cmdSave, &QPushButton::clicked, this, [this] { cmdSave_Click(); });
    connectGuarded(Origin::User, m_ui->cmdClose, &QPushButton::clicked, this, [this] { close(); });
    frmOnlineShopSettings::setUpInternet(*m_ui->cmdInternet, m_services);
    m_mark = MarkBestellzeiten();
    showZeiten(LoadBestellzeiten());
    setFixedSize(sizeHint());
}

frmOnlineShopSettingsBestellzeiten::~frmOnlineShopSettingsBestellzeiten() = default;

void frmOnlineShopSettingsBestellzeiten::setUpTage() {
    QGridLayout& grid = *m_ui->layout_Zeiten;
    const QString names[] = {tr("Mittag"), tr("Abend")};
    for (int i = 0; i < 2; ++i)
        grid.addWidget(new QLabel(u"<b>%1</b>"_s.arg(names[i])), 0, 1 + i * kPeriodeColumns, 1,
                       kPeriodeColumns);
    for (int i = 0; i < int(m_tage.size()); ++i) {
        const QString tag = tr(kTage[i]);
        grid.addWidget(new QLabel(tag), i + 1, 0);
        m_tage[size_t(i)] = {addPeriode(i + 1, 1, u"Midday"_s, tag + u' ' + names[0]),
                             addPeriode(i + 1, 1 + kPeriodeColumns, u"Evening"_s, tag + u' ' + names[1])};
    }
    grid.setColumnMinimumWidth(kPeriodeColumns, 24);
    grid.setColumnStretch(2 * kPeriodeColumns, 1);
}

frmOnlineShopSettingsBestellzeiten::PeriodeControls
frmOnlineShopSettingsBestellzeiten::addPeriode(int tag, int column, const QString& name,
                                               const QString& spoken) {
    QGridLayout& grid = *m_ui->layout_Zeiten;
    PeriodeControls controls{};
    for (size_t i = 0; i < controls.zeiten.size(); ++i) {
        const ZeitList& list = kZeiten[i];
        if (*list.before)
            grid.addWidget(new QLabel(tr(list.before)), tag, column++);
        auto* combo = controls.zeiten[i] = new QComboBox;
        combo->setObjectName(u"combo%1%2%3"_s.arg(name).arg(list.name).arg(tag));
        combo->setAccessibleName(spoken + u' ' + tr(list.spoken));
        frmOnlineShopSettings::fillSteps(*combo, 0, list.last, list.step);
        combo->setCurrentIndex(-1);
        grid.addWidget(combo, tag, column++);
    }
    controls.geschlossen = new QCheckBox(tr("geschlossen"));
    controls.geschlossen->setObjectName(u"check%1Close%2"_s.arg(name).arg(tag));
    controls.geschlossen->setAccessibleName(spoken + u' ' + tr("geschlossen"));
    grid.addWidget(controls.geschlossen, tag, column);
    return controls;
}

void frmOnlineShopSettingsBestellzeiten::setUpTabs() {
    QList<QWidget*> order;
    for (const Tag& tag : m_tage)
        for (const PeriodeControls& periode : {tag.midday, tag.evening}) {
            for (QComboBox* zeit : periode.zeiten)
                order << zeit;
            order << periode.geschlossen;
        }
    order << m_ui->txt_Abholzeit << m_ui->txt_LastOrder << m_ui->opt_ShopStatus0 << m_ui->opt_ShopStatus1
          << m_ui->txt_EMailAdress << m_ui->cmdSave << m_ui->cmdInternet << m_ui->cmdClose;
    for (qsizetype i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);
    order.first()->setFocus();
}

void frmOnlineShopSettingsBestellzeiten::setUpMinuten(QLineEdit& field, const QString& faulty) {
    platform::selectAllOnFocus(field);
    platform::reformatOnLeave(field, [this, faulty](const QString& text) {
        if (const auto number = minutes(text))
            return QString::number(*number);
        m_complaint = faulty;
        // The click or key that left the field has yet to arrive where it leads.
        QMetaObject::invokeMethod(
            this, [this] { common::guarded(Origin::User, [this] { complain(); }); }, Qt::QueuedConnection);
        return u"0"_s;
    });
}

bool frmOnlineShopSettingsBestellzeiten::complain() {
    if (m_complaint.isEmpty())
        return false;
    m_services.dialogs.MsgBox(std::exchange(m_complaint, {}), platform::kOk, tr("Ungültige Eingabe"));
    return true;
}

void frmOnlineShopSettingsBestellzeiten::showZeiten(const Bestellzeiten& zeiten) {
    const auto showPeriode = [](const PeriodeControls& controls, const Periode& periode) {
        for (size_t i = 0; i < controls.zeiten.size(); ++i)
            if (!periode.zeiten[i].isEmpty())
                platform::chooseText(*controls.zeiten[i], periode.zeiten[i]);
        controls.geschlossen->setChecked(periode.geschlossen);
    };
    for (const Wochentag& tag : zeiten.tage)
        if (tag.lngWochentag >= 1 && tag.lngWochentag <= qint64(m_tage.size())) {
            const Tag& controls = m_tage[size_t(tag.lngWochentag - 1)];
            showPeriode(controls.midday, tag.mittag);
            showPeriode(controls.evening, tag.abend);
        }
    if (!zeiten.lieferzeiten)
        return;
    m_ui->txt_Abholzeit->setText(QString::number(zeiten.lieferzeiten->lng_Abholzeit));
    m_ui->txt_LastOrder->setText(QString::number(zeiten.lieferzeiten->lng_LastOrder));
    (zeiten.lieferzeiten->geschlossen ? m_ui->opt_ShopStatus1 : m_ui->opt_ShopStatus0)->setChecked(true);
    m_ui->txt_EMailAdress->setText(zeiten.lieferzeiten->txt_EMailAdresse);
}

Bestellzeiten frmOnlineShopSettingsBestellzeiten::content() const {
    const auto periode = [](const PeriodeControls& controls) {
        Periode content;
        for (size_t i = 0; i < controls.zeiten.size(); ++i)
            content.zeiten[i] = controls.zeiten[i]->currentText();
        content.geschlossen = controls.geschlossen->isChecked();
        return content;
    };
    Bestellzeiten zeiten;
    for (size_t i = 0; i < m_tage.size(); ++i)
        zeiten.tage.push_back({qint64(i + 1), periode(m_tage[i].midday), periode(m_tage[i].evening)});
    zeiten.lieferzeiten = {minutes(m_ui->txt_Abholzeit->text()).value_or(0),
                           minutes(m_ui->txt_LastOrder->text()).value_or(0),
                           m_ui->opt_ShopStatus1->isChecked(), m_ui->txt_EMailAdress->text()};
    return zeiten;
}

void frmOnlineShopSettingsBestellzeiten::cmdSave_Click() {
    // By its key the button acts while the focus is in a field still, and before that has had its say.
    m_ui->cmdSave->setFocus();
    if (complain())
        return;
    const std::pair<QLineEdit*, QString> needed[] = {
        {m_ui->txt_Abholzeit, tr("Bitte geben Sie eine gültige Abholzeit ein.")},
        {m_ui->txt_LastOrder, tr("Bitte geben Sie eine gültige letzte Bestellzeit ein.")},
        {m_ui->txt_EMailAdress, tr("Bitte geben Sie eine gültige e-mail Adresse ein.")}};
    for (const auto& [field, faulty] : needed)
        if (field->text().trimmed().isEmpty()) {
            m_services.dialogs.MsgBox(faulty, platform::kOk, tr("Fehlerhafte Eingabe"));
            return field->setFocus();
        }
    if (!platform::saving(m_services.dialogs, [this] { SaveBestellzeiten(content(), m_mark); }))
        return;
    m_mark = MarkBestellzeiten();
    m_services.dialogs.MsgBox(tr("Die Bestellzeiten wurden abgespeichert."), platform::kOk,
                              tr("Bestellzeiten"));
}
