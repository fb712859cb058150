#include "shop/frmOnlineShopSettingsDokumente.h"
#include "common/Guard.h"
#include "platform/Saving.h"
#include "shop/SettingRows.h"
#include "shop/frmOnlineShopSettings.h"
#include "shop/modOnlineShopSettingsDokumente.h"
#include "ui_frmOnlineShopSettingsDokumente.h"
#include <QApplication>
#include <QCloseEvent>
#include <QSignalBlocker>
#include <QTreeWidgetItemIterator>

using namespace modOnlineShopSettingsDokumente;
using namespace Qt::StringLiterals;
using common::connectGuarded;
using common::Origin;

namespace {

struct Node {
    const char* text;
    /// "" for a root; the nodes below it follow.
    const char16_t* key;
};

constexpr Node kNodes[] = {
    {QT_TRANSLATE_NOOP("frmOnlineShopSettingsDokumente", "Dokumente"), u""},
    {QT_TRANSLATE_NOOP("frmOnlineShopSettingsDokumente", "Kontakt"), u"Kontakt"},
    {QT_TRANSLATE_NOOP("frmOnlineShopSettingsDokumente", "AGB"), u"AGB"},
    {QT_TRANSLATE_NOOP("frmOnlineShopSettingsDokumente", "FAQ"), u"FAQ"},
    {QT_TRANSLATE_NOOP("frmOnlineShopSettingsDokumente", "Widerspruch"), u"Widerspruchsrecht"},
    {QT_TRANSLATE_NOOP("frmOnlineShopSettingsDokumente", "Datenschutz"), u"Datenschutz"},
    {QT_TRANSLATE_NOOP("frmOnlineShopSettingsDokumente", "News"), u""},
    {QT_TRANSLATE_NOOP("frmOnlineShopSettingsDokumente", "Informationen"), u"Informationen"},
    {QT_TRANSLATE_NOOP("frmOnlineShopSettingsDokumente", "EMail"), u""},
    {QT_TRANSLATE_NOOP("frmOnlineShopSettingsDokumente", "Betreff"), u"Betreff"},
    {QT_TRANSLATE_NOOP("frmOnlineShopSettingsDokumente", "Bestätigungstext"), u"ConfoText"}};

constexpr int kKeyRole = Qt::UserRole;

/// Lines end as they are stored: with both characters.
QString withLineEnds(QString text) {
    return text.replace(u'\n', u"\r\n"_s);
}

QString keyOf(const QTreeWidgetItem& node) {
    return node.data(0, kKeyRole).toString();
}

} // namespace

frmOnlineShopSettingsDokumente::frmOnlineShopSettingsDokumente(const platform::Services& services,
                                                               QWidget* parent) :
    QWidget(parent),
    m_services(services), m_ui(std::make_unique<Ui::frmOnlineShopSettingsDokumente>()) {
    m_ui->setupUi(this);
    setUpButtons();
    fillTree();
    connectGuarded(Origin::User, m_ui->TreeView, &QTreeWidget::currentItemChanged, this,
                   [this](QTreeWidgetItem* node, QTreeWidgetItem*) {
                       if (!isUnsaved())
                           return TreeView_NodeClick(*node);
                       // No question while the mouse button is down and the tree in the middle of it.
                       QMetaObject::invokeMethod(
                           this,
                           [this] {
                               common::guarded(Origin::User, [this] {
                                   TreeView_NodeClick(*m_ui->TreeView->currentItem());
                               });
                           },
                           Qt::QueuedConnection);
                   });
    m_ui->TreeView->setCurrentItem(m_ui->TreeView->topLevelItem(0)->child(0));
}

frmOnlineShopSettingsDokumente::~frmOnlineShopSettingsDokumente() = default;

void frmOnlineShopSettingsDokumente::setUpButtons() {
    const auto onClick = [this](QPushButton* button, auto act) {
        connectGuarded(Origin::User, button, &QPushButton::clicked, this, act);
    };
    onClick(m_ui->cmdSave, [this] { SaveDokument(); });
    onClick(m_ui->cmdDefault, [this] { cmdDefault_Click(); });
    onClick(m_ui->cmdClose, [this] { close(); });
    frmOnlineShopSettings::setUpInternet(*m_ui->cmdInternet, m_services);
}

void frmOnlineShopSettingsDokumente::fillTree() {
    QTreeWidgetItem* root = nullptr;
    for (const Node& node : kNodes) {
        auto* item = *node.key ? new QTreeWidgetItem(root) : new QTreeWidgetItem(m_ui->TreeView);
        item->setText(0, tr(node.text));
        item->setData(0, kKeyRole, QString::fromUtf16(node.key));
        if (!*node.key)
            root = item;
    }
    m_ui->TreeView->expandAll();
}

void frmOnlineShopSettingsDokumente::TreeView_NodeClick(const QTreeWidgetItem& node) {
    if (!askForUnsaved())
        return markChosenNode();
    m_key = keyOf(node);
    const bool isDokument = node.parent() != nullptr;
    if (isDokument)
        ActiveMenuSelection(m_key);
    else
        setDokumentText(m_stored = QString());
    for (QWidget* control : QWidgetList{m_ui->DokumenteText, m_ui->cmdSave, m_ui->cmdDefault})
        control->setEnabled(isDokument);
}

void frmOnlineShopSettingsDokumente::markChosenNode() {
    const QSignalBlocker silent(m_ui->TreeView);
    for (QTreeWidgetItemIterator node(m_ui->TreeView); *node; ++node)
        if (keyOf(**node) == m_key)
            m_ui->TreeView->setCurrentItem(*node);
}

void frmOnlineShopSettingsDokumente::ActiveMenuSelection(const QString& key) {
    m_mark = MarkDokument(key);
    setDokumentText(LoadDokument(key, shop::kFirmRow).value_or(QString()));
    m_stored = m_ui->DokumenteText->toPlainText();
}

void frmOnlineShopSettingsDokumente::setDokumentText(const QString& text) {
    m_ui->DokumenteText->setPlainText(text);
}

void frmOnlineShopSettingsDokumente::cmdDefault_Click() {
    const auto text = LoadDokument(m_key, shop::kDefaultRow);
    if (!text)
        return;
    if (m_ui->DokumenteText->toPlainText() != QString(*text).remove(u'\r') && !askForUnsaved())
        return;
    setDokumentText(*text);
    m_ui->DokumenteText->setFocus();
}

void frmOnlineShopSettingsDokumente::SaveDokument() {
    const QString text = m_ui->DokumenteText->toPlainText();
    const auto save = [&] {
        modOnlineShopSettingsDokumente::SaveDokument(m_key, withLineEnds(text), m_mark);
    };
    if (!platform::saving(m_services.dialogs, save))
        return;
    m_stored = text;
    m_mark = MarkDokument(m_key);
    m_services.dialogs.MsgBox(tr("Das Dokument wurde gespeichert."), platform::kOk, tr("Speichern"));
}

bool frmOnlineShopSettingsDokumente::isUnsaved() const {
    return !m_key.isEmpty() && m_ui->DokumenteText->toPlainText() != m_stored;
}

bool frmOnlineShopSettingsDokumente::askForUnsaved() {
    if (!isUnsaved())
        return true;
    if (m_services.dialogs.MsgBox(tr("Möchten Sie die Änderungen speichern?"), platform::kYesNo,
                                  tr("Speichern")) == platform::kAnswerYes)
        SaveDokument();
    else
        m_stored = m_ui->DokumenteText->toPlainText();
    return !isUnsaved();
}

void frmOnlineShopSettingsDokumente::closeEvent(QCloseEvent* event) {
    event->accept();
    // Who logs in closes what the former user left open, and is not asked about it.
    if (!QApplication::activeModalWidget())
        common::guarded(Origin::User, [&] { event->setAccepted(askForUnsaved()); });
}
