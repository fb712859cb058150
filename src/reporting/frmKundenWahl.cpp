#include "reporting/frmKundenWahl.h"
#include "common/Convert.h"
#include "common/Guard.h"
#include "masterdata/modVerwaltungKunden.h"
#include "platform/form/FieldHelpers.h"
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <cmath>

using namespace Qt::StringLiterals;
using common::connectGuarded;
using common::Origin;

frmKundenWahl::frmKundenWahl(QWidget& screen) :
    QObject(&screen), m_txt_KundenID(*screen.findChild<QLineEdit*>(u"txt_KundenID"_s)),
    m_opt_TelefonNummer(*screen.findChild<QRadioButton*>(u"opt_TelefonNummer"_s)),
    m_txt_KundenAdresse(*screen.findChild<QPlainTextEdit*>(u"txt_KundenAdresse"_s)),
    m_cmdPrint(*screen.findChild<QPushButton*>(u"cmdPrint"_s)) {
    m_cmdPrint.setEnabled(false);
    platform::selectAllOnFocus(m_txt_KundenID);
    platform::digitsOnly(m_txt_KundenID);
    platform::reformatOnLeave(m_txt_KundenID, [this](const QString& text) {
        common::guarded(Origin::User, [this] { LoadKundenStammKundenStats(); });
        return text;
    });
    m_txt_KundenID.installEventFilter(this);
    connectGuarded(Origin::User, &m_txt_KundenID, &QLineEdit::textChanged, this,
                   [this] { m_cmdPrint.setEnabled(false); });
    connectGuarded(Origin::User, screen.findChild<QPushButton*>(u"cmdLoad"_s), &QPushButton::clicked, this,
                   [this] { LoadKundenStammKundenStats(); });
}

bool frmKundenWahl::eventFilter(QObject* object, QEvent* event) {
    const auto* key = event->type() == QEvent::KeyPress ? static_cast<QKeyEvent*>(event) : nullptr;
    if (!key || (key->key() != Qt::Key_Return && key->key() != Qt::Key_Enter))
        return QObject::eventFilter(object, event);
    common::guarded(Origin::User, [this] { LoadKundenStammKundenStats(); });
    return true;
}

qint64 frmKundenWahl::wanted() const {
    const QString text = m_txt_KundenID.text().trimmed();
    if (!m_opt_TelefonNummer.isChecked()) {
        bool isNumber = false;
        const qint64 number = text.toLongLong(&isNumber);
        return isNumber ? number : -1;
    }
    const auto number = common::parseNumber(text);
    return number && std::isfinite(*number) ? modVerwaltungKunden::FindKundeByTelefon(*number) : -1;
}

void frmKundenWahl::LoadKundenStammKundenStats() {
    const qint64 id = wanted();
    m_lng_KundenID = modVerwaltungKunden::KundeExists(id) ? id : -1;
    m_txt_KundenAdresse.setPlainText(modVerwaltungKunden::GetKundeAdresse(m_lng_KundenID));
    m_cmdPrint.setEnabled(m_lng_KundenID >= 0);
}

QString frmKundenWahl::adresse() const {
    return modVerwaltungKunden::GetKundeAdresse(m_lng_KundenID).trimmed();
}

void frmKundenWahl::leer() {
    m_txt_KundenAdresse.clear();
    m_cmdPrint.setEnabled(false);
    m_txt_KundenID.setFocus();
}
