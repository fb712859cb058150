#include "platform/QtDialogs.h"
#include "common/Guard.h"
#include "platform/ColorCode.h"
#include "platform/HeldKeys.h"
#include "platform/ShortcutGate.h"
#include "platform/frmSystemServerLogIn.h"
#include "platform/report/PrinterState.h"
#include <QApplication>
#include <QColorDialog>
#include <QDialogButtonBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QProgressDialog>
#include <QPushButton>
#include <QRegularExpression>
#include <QScreen>
#include <QShortcut>
#include <QStandardPaths>

namespace platform {
namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("QtDialogs", text);
}

void nameButton(QMessageBox& box, QMessageBox::StandardButton button, const char* text) {
    if (auto* there = box.button(button))
        there->setText(tr(text));
}

void addButtons(QMessageBox& box, int buttons) {
    switch (buttons) {
    case kYesNo:
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        box.setDefaultButton(QMessageBox::Yes);
        // Esc and the window's cross mean the careful answer.
        box.setEscapeButton(QMessageBox::No);
        break;
    case kRetryCancel:
        box.setStandardButtons(QMessageBox::Retry | QMessageBox::Cancel);
        box.setDefaultButton(QMessageBox::Retry);
        break;
    default:
        box.setStandardButtons(QMessageBox::Ok);
        box.setDefaultButton(QMessageBox::Ok);
    }
    nameButton(box, QMessageBox::Yes, "&Ja");
    nameButton(box, QMessageBox::No, "&Nein");
    nameButton(box, QMessageBox::Ok, "OK");
    nameButton(box, QMessageBox::Cancel, "&Abbrechen");
    nameButton(box, QMessageBox::Retry, "&Wiederholen");
}

/// Has a key act as soon as the box stands, also one that was pressed while it was still opening. Such a key
/// goes to the window below, which is blocked: nobody but a shortcut of the application learns of it.
void onKey(QDialog& box, QKeyCombination key, const std::function<void()>& act) {
    auto* shortcut = new QShortcut(QKeySequence(key), &box);
    shortcut->setContext(Qt::ApplicationShortcut);
    // A key still held down from before answers nothing: "Wiederholen" would follow upon "Wiederholen".
    shortcut->setAutoRepeat(false);
    QObject::connect(shortcut, &QShortcut::activated, &box, act);
}

/// Enter presses the button that has the focus, else it acts as told.
void onEnter(QDialog& box, const std::function<void()>& otherwise) {
    for (const Qt::Key enter : {Qt::Key_Return, Qt::Key_Enter})
        onKey(box, enter, [&box, otherwise] {
            if (auto* chosen = qobject_cast<QAbstractButton*>(box.focusWidget()))
                chosen->click();
            else
                otherwise();
        });
}

void answerAtOnce(QMessageBox& box) {
    for (QAbstractButton* button : box.buttons())
        if (!button->shortcut().isEmpty())
            onKey(box, button->shortcut()[0].key(), [button] { button->click(); });
    onEnter(box, [&box] { box.defaultButton()->click(); });
}

/// Once the field has the focus it takes these keys itself, before any shortcut.
void typeAtOnce(QInputDialog& box) {
    auto* field = box.findChild<QLineEdit*>();
    field->setFocus();
    field->selectAll();
    for (int code = Qt::Key_Exclam; code <= Qt::Key_AsciiTilde; ++code) {
        const QChar text(code);
        onKey(box, Qt::Key(code), [field, typed = text.toLower()] { field->insert(typed); });
        if (text.isLetter())
            onKey(box, Qt::SHIFT | Qt::Key(code), [field, text] { field->insert(text); });
    }
    onEnter(box, [&box] { box.accept(); });
}

/// The frame draws the title between buttons of its own, which the box does not know of. A text that needs
/// more room than that has it already.
void makeRoomForTitle(QMessageBox& box) {
    constexpr int kFrame = 110;
    const QFontMetrics metrics = box.fontMetrics();
    const int room = metrics.horizontalAdvance(box.windowTitle()) + kFrame;
    auto* text = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
    if (text && metrics.size(0, box.text()).width() < room)
        text->setMinimumWidth(room);
}

int answerOf(int button) {
    switch (button) {
    case QMessageBox::Yes:
        return kAnswerYes;
    case QMessageBox::No:
        return kAnswerNo;
    case QMessageBox::Retry:
        return kAnswerRetry;
    case QMessageBox::Cancel:
        return kAnswerCancel;
    default:
        return kAnswerOk;
    }
}

/// Asks for the printer and its paper only: which pages, how many and into which file is decided in the
/// preview that follows.
void askForPrinterOnly(QPrintDialog& dialog) {
    dialog.setOptions(QPrintDialog::PrintShowPageSize);
    const auto* box = dialog.findChild<QDialogButtonBox*>();
    for (QAbstractButton* button : box->buttons()) {
        const auto role = box->buttonRole(button);
        button->setVisible(role == QDialogButtonBox::AcceptRole || role == QDialogButtonBox::RejectRole);
        if (role == QDialogButtonBox::AcceptRole)
            button->setText(tr("OK"));
    }
}

QString kindOf(const QString& suffix) {
    return suffix == QLatin1String("mdb") ? tr("Datenbank") : suffix.toUpper();
}

/// By hand or Esc only: Enter and the blank that are typed ahead are for the screen below.
QPushButton* giveUpButton() {
    auto* button = new QPushButton(tr("Abbrechen (Esc)"));
    button->setFocusPolicy(Qt::NoFocus);
    button->setAutoDefault(false);
    return button;
}

/// What was typed so far waits in the window system, for a window that a box is about to block: the toolkit
/// would drop it then. It goes to whoever holds the keys; of the mouse and of windows that are to close
/// nothing is dealt out, as nothing will be while the box stands.
void takeKeysTypedMeanwhile() {
    class OnlyKeys : public QObject {
      public:
        bool eventFilter(QObject* watched, QEvent* event) override {
            switch (event->type()) {
            case QEvent::MouseButtonPress:
            case QEvent::MouseButtonRelease:
            case QEvent::MouseButtonDblClick:
            case QEvent::Wheel:
            case QEvent::TouchBegin:
            case QEvent::Close:
                return watched->isWindowType();
            default:
                return false;
            }
        }
    } onlyKeys;

    qApp->installEventFilter(&onlyKeys);
    QCoreApplication::processEvents();
}

/// The progress of work, without a known end where the total is 0. The box is made once the work has lasted:
/// most is done sooner, and until then no event is dealt out.
class ProgressBox {
  public:
    explicit ProgressBox(const QString& text) : m_text(text) { m_sinceBegun.start(); }

    void tell(qint64 done, qint64 total) {
        constexpr int kSteps = 1000;
        constexpr int kBeforeShown = 500;
        constexpr int kBetweenPaintings = 40;
        if (m_box ? m_sincePainted.elapsed() < kBetweenPaintings : m_sinceBegun.elapsed() < kBeforeShown)
            return;
        const common::NestedEventLoop loop;
        const ShortcutGate gate;
        if (!m_box)
            show();
        m_box->setMaximum(total > 0 ? kSteps : 0);
        if (total > 0)
            m_box->setValue(int(done * kSteps / total));
        QCoreApplication::processEvents();
        m_sincePainted.start();
        if (m_box->wasCanceled()) {
            m_heldKeys->drop();
            throw GivenUp();
        }
    }

  private:
    void show() {
        m_box = std::make_unique<QProgressDialog>(m_text, QString(), 0, 0, QApplication::activeWindow());
        m_box->setCancelButton(giveUpButton());
        m_box->setWindowTitle(QStringLiteral("Tavolino"));
        m_box->setWindowModality(Qt::ApplicationModal);
        m_box->setMinimumWidth(360);
        m_box->setAutoClose(false);
        m_box->setAutoReset(false);
        m_heldKeys = std::make_unique<HeldKeys>(*m_box, HeldKeys::Since::Beginning);
        takeKeysTypedMeanwhile();
        m_box->show();
    }

    const QString m_text;
    QElapsedTimer m_sinceBegun, m_sincePainted;
    std::unique_ptr<QProgressDialog> m_box;
    std::unique_ptr<HeldKeys> m_heldKeys;
};

} // namespace

int QtDialogs::MsgBox(const QString& text, int style, const QString& title) {
    QMessageBox box(QApplication::activeWindow());
    box.setWindowTitle(title.isEmpty() ? QStringLiteral("Tavolino") : title);
    box.setTextFormat(Qt::PlainText);
    box.setText(text);
    const int icon = style & 0x70;
    if (icon == kStop)
        box.setIcon(QMessageBox::Critical);
    else if (icon == kInformation)
        box.setIcon(QMessageBox::Information);
    else if ((style & 0x0F) == kYesNo)
        box.setIcon(QMessageBox::Question);
    addButtons(box, style & 0x0F);
    makeRoomForTitle(box);
    answerAtOnce(box);
    return answerOf(execModal(box));
}

QString QtDialogs::InputBox(const QString& prompt, const QString& title, const QString& preset) {
    QInputDialog box(QApplication::activeWindow());
    box.setWindowTitle(title.isEmpty() ? QStringLiteral("Tavolino") : title);
    box.setLabelText(prompt);
    box.setTextValue(preset);
    box.setOkButtonText(tr("OK"));
    box.setCancelButtonText(tr("Abbrechen"));
    typeAtOnce(box);
    return execModal(box) == QDialog::Accepted ? box.textValue() : QString();
}

QString QtDialogs::OpenFile(const QString& title, const QString& filter) {
    QFileDialog box(QApplication::activeWindow(), title, QString(), filter);
    box.setFileMode(QFileDialog::ExistingFile);
    return execModal(box) == QDialog::Accepted ? box.selectedFiles().value(0) : QString();
}

std::optional<PrinterChoice> QtDialogs::ChoosePrinter(const PrinterChoice& current) {
    QPrinter printer(QPrinter::HighResolution);
    if (!current.printer.DeviceName.isEmpty())
        printer.setPrinterName(current.printer.DeviceName);
    printer.setPageOrientation(current.orientation == ReportJob::kLandscape ? QPageLayout::Landscape
                                                                            : QPageLayout::Portrait);
    QPrintDialog dialog(&printer, QApplication::activeWindow());
    dialog.setWindowTitle(tr("Drucker"));
    askForPrinterOnly(dialog);
    if (execModal(dialog) != QDialog::Accepted)
        return {};
    const bool landscape = printer.pageLayout().orientation() == QPageLayout::Landscape;
    const int orientation = landscape ? ReportJob::kLandscape : ReportJob::kPortrait;
    const QString name = printer.printerName();
    if (name == current.printer.DeviceName)
        return PrinterChoice{current.printer, orientation};
    return PrinterChoice{{name, current.printer.DriverName, printerPort(name)}, orientation};
}

QString QtDialogs::SaveFile(const QString& title, const QString& name, const QStringList& suffixes) {
    static const QRegularExpression impossible(QStringLiteral("[\\\\/:*?\"<>|]"));
    const QDir folder(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    QStringList filters;
    for (const QString& suffix : suffixes)
        filters << QStringLiteral("%1 (*.%2)").arg(kindOf(suffix), suffix);
    QFileDialog dialog(QApplication::activeWindow(), title, folder.path(), filters.join(QLatin1String(";;")));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(suffixes.first());
    dialog.selectFile(QString(name).replace(impossible, QStringLiteral("-")) + QLatin1Char('.') +
                      suffixes.first());
    common::connectGuarded(common::Origin::User, &dialog, &QFileDialog::filterSelected, &dialog,
                           [&](const QString& filter) {
                               const QString suffix = suffixes.value(filters.indexOf(filter));
                               const QFileInfo file(dialog.selectedFiles().value(0));
                               dialog.setDefaultSuffix(suffix);
                               if (suffixes.contains(file.suffix()))
                                   dialog.selectFile(file.completeBaseName() + QLatin1Char('.') + suffix);
                           });
    return execModal(dialog) == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

std::optional<int> QtDialogs::ChooseColor(int current) {
    QColorDialog dialog(QColor::fromRgb(QRgb(swapRedAndBlue(current))), QApplication::activeWindow());
    dialog.setWindowTitle(tr("Farbe wählen"));
    // The toolkit's own, which speaks German as all dialogs do.
    dialog.setOption(QColorDialog::DontUseNativeDialog);
    if (execModal(dialog) != QDialog::Accepted)
        return {};
    return swapRedAndBlue(int(dialog.selectedColor().rgb() & 0xffffff));
}

bool QtDialogs::WaitForServer(const std::function<bool()>& stillExecuting, const QString& text) {
    if (!stillExecuting())
        return true;
    frmSystemServerLogIn dialog(stillExecuting, text, QApplication::activeWindow());
    return execModal(dialog) == QDialog::Accepted;
}

Progress QtDialogs::ShowProgress(const QString& text) {
    return [box = std::make_shared<ProgressBox>(text)](qint64 done, qint64 total) { box->tell(done, total); };
}

void centreOnScreen(QWidget& window) {
    // Before it is shown it has its size from its layout only.
    window.ensurePolished();
    if (!window.testAttribute(Qt::WA_Resized))
        window.adjustSize();
    window.move(window.screen()->availableGeometry().center() - window.rect().center());
}

void maximiseScreen(QWidget& screen) {
    (screen.parentWidget() ? screen.parentWidget() : &screen)->showMaximized();
}

int execModal(QDialog& dialog) {
    const common::NestedEventLoop loop;
    const ShortcutGate gate;
    const HeldKeys heldKeys(dialog);
    return dialog.exec();
}

} // namespace platform
