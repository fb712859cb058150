#include "shop/frmOnlineShopSettingsFonts.h"
#include "common/Guard.h"
#include "common/RunTimeError.h"
#include "desks/MainDesks.h"
#include "platform/ColorCode.h"
#include "platform/Saving.h"
#include "platform/form/Contrast.h"
#include "platform/form/FieldHelpers.h"
#include "shop/frmOnlineShopSettings.h"
#include "ui_frmOnlineShopSettingsFonts.h"
#include <QBuffer>
#include <QCloseEvent>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>

using namespace modOnlineShopSettingsFonts;
using namespace Qt::StringLiterals;
using common::connectGuarded;
using common::Origin;

namespace {

constexpr QSize kPictureSize(900, 80);
/// Far more than a picture of that size takes.
constexpr qint64 kMostBytes = 4LL * 1024 * 1024;
constexpr const char* kTag = "Tag";

QColor colorOf(int dez) {
    return QColor::fromRgb(QRgb(platform::swapRedAndBlue(dez)));
}

void paint(QLabel& label, const QColor& ground, const QColor& ink) {
    QPalette palette = label.palette();
    palette.setColor(QPalette::Window, ground);
    palette.setColor(QPalette::WindowText, ink);
    label.setPalette(palette);
}

/// A picture file as the user chose it: measured before it is decoded, so that what is too big never costs
/// its memory.
struct PictureFile {
    explicit PictureFile(const QString& path) {
        QFile file(path);
        readable = file.open(QIODevice::ReadOnly);
        huge = file.size() > kMostBytes;
        if (!readable || huge)
            return;
        bytes = file.readAll();
        QBuffer buffer(&bytes);
        QImageReader reader(&buffer);
        reader.setDecideFormatFromContent(true);
        const QByteArray format = reader.format();
        extension = format == "gif" ? u"gif"_s : format == "jpeg" ? u"jpg"_s : QString();
        if (!extension.isEmpty())
            size = reader.size();
        whole = size == kPictureSize && !reader.read().isNull();
    }

    bool readable = false, huge = false;
    QByteArray bytes;
    /// By the content: a name may end in capitals, or in "jpeg".
    QString extension;
    QSize size;
    bool whole = false;
};

} // namespace

frmOnlineShopSettingsFonts::frmOnlineShopSettingsFonts(const platform::Services& services, QWidget* parent) :
    QWidget(parent), m_services(services), m_ui(std::make_unique<Ui::frmOnlineShopSettingsFonts>()) {
    m_ui->setupUi(this);
    m_ui->lbl_VorschauBalken->setText(tr("Speisekarte     Kontakt     AGB     FAQ     Datenschutz"));
    m_ui->lbl_VorschauText->setText(tr("Hier stehen Ihre Informationen und die Speisekarte."));
    platform::selectAllOnFocus(*m_ui->inputShopTitel);
    platform::enterChain({m_ui->inputShopTitel, m_ui->cmdSave});
    connectGuarded(Origin::User, m_ui->inputShopTitel, &QLineEdit::textChanged, this,
                   [this](const QString& title) { m_ui->lbl_VorschauTitel->setText(title); });
    setUpButtons();
    showStored();
    setFixedSize(sizeHint());
}

frmOnlineShopSettingsFonts::~frmOnlineShopSettingsFonts() = default;

void frmOnlineShopSettingsFonts::setUpButtons() {
    const auto onClick = [this](QPushButton* button, auto act) {
        connectGuarded(Origin::User, button, &QPushButton::clicked, this, act);
    };
    onClick(m_ui->cmdBalkenfarbe, [this] { chooseColor(m_balken); });
    onClick(m_ui->cmdSchriftfarbe, [this] { chooseColor(m_schrift); });
    onClick(m_ui->cmdHintergrundbild, [this] { cmdHintergrundbild_Click(); });
    onClick(m_ui->cmdSave, [this] { cmdSave_Click(); });
    onClick(m_ui->cmdDefault, [this] { cmdDefault_Click(); });
    onClick(m_ui->cmdClose, [this] { close(); });
    frmOnlineShopSettings::setUpInternet(*m_ui->cmdInternet, m_services);
}

void frmOnlineShopSettingsFonts::closeEvent(QCloseEvent* event) {
    event->accept();
    // The frame around the screen closes it once more.
    const QStringList unsaved = std::exchange(m_unsaved, {});
    common::guarded(Origin::User, [&] {
        tellingFailure([&unsaved] {
            for (const QString& extension : unsaved)
                DropWorkingCopy(extension);
        });
    });
}

void frmOnlineShopSettingsFonts::showStored() {
    m_mark = MarkCorporateIdentity();
    if (const auto identity = LoadCorporateIdentity())
        showIdentity(*identity);
}

void frmOnlineShopSettingsFonts::showIdentity(const CorporateIdentity& identity) {
    m_balken = identity.Balkenfarbe;
    m_schrift = identity.Schriftfarbe;
    showColors();
    m_ui->inputShopTitel->setText(identity.txt_ShopTitel);
    setPicture(identity.txt_Hintergrundbild);
}

void frmOnlineShopSettingsFonts::showColors() {
    const QColor ground = colorOf(m_balken.dez);
    const QColor ink = colorOf(m_schrift.dez);
    paint(*m_ui->inputBalkenfarbe, ground, platform::readable(ground, ground));
    m_ui->inputBalkenfarbe->setText(u'#' + m_balken.hex);
    m_ui->inputBalkenfarbe->setProperty(kTag, m_balken.hex);
    paint(*m_ui->inputSchriftfarbe, ground, ink);
    m_ui->inputSchriftfarbe->setText(u'#' + m_schrift.hex);
    m_ui->inputSchriftfarbe->setProperty(kTag, m_schrift.hex);
    paint(*m_ui->lbl_VorschauBalken, ground, ink);
    constexpr double kLegible = 3;
    m_ui->lbl_Kontrast->setText(platform::contrast(ink, ground) < kLegible
                                    ? tr("Diese Schrift ist auf diesem Balken schlecht zu lesen.")
                                    : QString());
}

void frmOnlineShopSettingsFonts::chooseColor(Farbe& color) {
    const auto chosen = m_services.dialogs.ChooseColor(color.dez);
    if (!chosen)
        return;
    color = {*chosen, ColorCodeToRGB(*chosen)};
    showColors();
}

QString frmOnlineShopSettingsFonts::extension() const {
    return m_ui->inputHintergrundbild->property(kTag).toString();
}

void frmOnlineShopSettingsFonts::setPicture(const QString& fileName) {
    m_ui->inputHintergrundbild->setText(fileName);
    m_ui->inputHintergrundbild->setProperty(kTag, ExtensionOf(fileName));
    showPicture(fileName);
}

void frmOnlineShopSettingsFonts::showPicture(const QString& fileName) {
    QImageReader reader(PicturePath(fileName));
    reader.setDecideFormatFromContent(true);
    // What lies in the folder may be of any size.
    if (reader.size() != kPictureSize)
        reader.setScaledSize(kPictureSize);
    const QImage image = reader.read();
    if (image.isNull())
        m_ui->imgHintergrundbild->setText(
            tr("Das Titelbild \"%1\" kann nicht angezeigt werden.").arg(fileName));
    else
        m_ui->imgHintergrundbild->setPixmap(QPixmap::fromImage(image));
}

void frmOnlineShopSettingsFonts::cmdHintergrundbild_Click() {
    const QString path = m_services.dialogs.OpenFile(tr("Titelbild"), tr("Images (*.gif *.jpg)"));
    if (path.isEmpty())
        return;
    const QString invalid = tr("Ungültiges Bild");
    const PictureFile file(path);
    if (!file.readable)
        return tell(tr("Die Datei \"%1\" kann nicht gelesen werden.").arg(QFileInfo(path).fileName()),
                    invalid);
    if (file.huge)
        return tell(tr("Die Datei ist zu gross (höchstens 4 MB)."), invalid);
    if (file.size.isEmpty())
        return tell(tr("Diese Datei ist kein Bild (nur GIF / JPG)."), invalid);
    // The firm's wording; 900 is the width.
    if (file.size != kPictureSize)
        return tell(tr("Das Bild muss Höhe: 900 x Breite: 80 Pixel sein."), invalid);
    if (!file.whole)
        return tell(tr("Diese Datei ist kein Bild (nur GIF / JPG)."), invalid);
    tellingFailure([&] {
        const QString staged = StagePicture(file.extension, file.bytes);
        m_unsaved << file.extension;
        setPicture(staged);
    });
}

void frmOnlineShopSettingsFonts::cmdDefault_Click() {
    tellingFailure([this] {
        const auto identity = LoadDefaultCorporateIdentity();
        if (identity) {
            showIdentity(*identity);
            m_unsaved << extension();
        }
    });
}

void frmOnlineShopSettingsFonts::cmdSave_Click() {
    platform::removeQuotes(*m_ui->inputShopTitel);
    bool saved = false;
    tellingFailure([&] {
        saved = platform::saving(m_services.dialogs, [this] {
            SaveCorporateIdentity(
                {m_balken, m_schrift, m_ui->inputHintergrundbild->text(), m_ui->inputShopTitel->text()},
                m_mark);
        });
    });
    if (!saved)
        return;
    m_unsaved.clear();
    showStored();
    desks::showMessage(m_services.navigation, tr("Die Gestaltung des Online Shops ist gespeichert"));
}

void frmOnlineShopSettingsFonts::tell(const QString& text, const QString& caption) {
    m_services.dialogs.MsgBox(text, platform::kOk, caption);
}

bool frmOnlineShopSettingsFonts::tellingFailure(const std::function<void()>& act) {
    try {
        act();
        return true;
    } catch (const common::RunTimeError& error) {
        // The order desk goes on where a picture cannot be written.
        if (error.number() != common::kFileNotFound && error.number() != common::kDiskFull &&
            error.number() != common::kPlatformFailure)
            throw;
        m_services.dialogs.MsgBox(error.sentence(), platform::kOk + platform::kStop, windowTitle());
        return false;
    }
}
