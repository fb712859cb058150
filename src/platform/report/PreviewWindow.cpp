#include "platform/report/PreviewWindow.h"
#include "common/Guard.h"
#include "common/RunTimeError.h"
#include "platform/report/ReportPrinting.h"
#include <QAction>
#include <QGraphicsView>
#include <QGuiApplication>
#include <QLabel>
#include <QPrintPreviewWidget>
#include <QScreen>
#include <QScrollBar>
#include <QTimer>
#include <QToolBar>

using namespace Qt::StringLiterals;

namespace platform {

PreviewWindow::PreviewWindow(ReportDocument report, QString printerName, Dialogs& dialogs) :
    m_report(std::move(report)), m_printerName(std::move(printerName)), m_dialogs(dialogs),
    m_device(QPrinter::HighResolution) {
    setAttribute(Qt::WA_DeleteOnClose);
    // The program ends with its main window, whatever is still being looked at.
    setAttribute(Qt::WA_QuitOnClose, false);
    setObjectName(u"PreviewWindow"_s);
    setWindowTitle(m_report.title());
    // A file as device: the preview needs no printer.
    m_device.setOutputFormat(QPrinter::PdfFormat);
    m_report.setUp(m_device);
    m_preview = new QPrintPreviewWidget(&m_device, this);
    m_preview->setObjectName(u"Preview"_s);
    m_preview->setAccessibleName(tr("Seitenansicht"));
    setCentralWidget(m_preview);
    addActions();
    common::connectGuarded(common::Origin::User, m_preview, &QPrintPreviewWidget::paintRequested, this,
                           [this](QPrinter* device) { paint(*device); });
    common::connectGuarded(common::Origin::User, m_preview, &QPrintPreviewWidget::previewChanged, this,
                           [this] { showPosition(); });
    // Scrolling to another page is told by the scroll bar only.
    common::connectGuarded(common::Origin::User, scrollBar(), &QScrollBar::valueChanged, this,
                           [this] { showPosition(); });
    startSize();
    m_preview->setFocus();
}

void PreviewWindow::addActions() {
    m_bar = addToolBar(tr("Seitenansicht"));
    m_bar->setMovable(false);
    m_bar->setContextMenuPolicy(Qt::PreventContextMenu);
    using K = QKeySequence;
    addAction("cmdPrint", tr("&Drucken"), {K(Qt::CTRL | Qt::Key_P)}, &PreviewWindow::printReport);
    addAction("cmdSavePdf", tr("Als &PDF speichern"), {K(QKeySequence::Save)}, &PreviewWindow::savePdf);
    m_bar->addSeparator();
    addAction("cmdZoomIn", tr("&Vergrössern"), {K(Qt::CTRL | Qt::Key_Plus), K(Qt::Key_Plus)},
              &PreviewWindow::zoomIn);
    addAction("cmdZoomOut", tr("V&erkleinern"), {K(Qt::CTRL | Qt::Key_Minus), K(Qt::Key_Minus)},
              &PreviewWindow::zoomOut);
    addAction("cmdFitPage", tr("&Ganze Seite"), {K(Qt::CTRL | Qt::Key_0)}, &PreviewWindow::fitPage);
    addAction("cmdFitWidth", tr("Seiten&breite"), {K(Qt::CTRL | Qt::Key_1)}, &PreviewWindow::fitWidth);
    m_bar->addSeparator();
    m_previous =
        addAction("cmdPreviousPage", tr("&Zurück"), {K(Qt::Key_PageUp)}, &PreviewWindow::previousPage);
    m_next = addAction("cmdNextPage", tr("&Weiter"), {K(Qt::Key_PageDown)}, &PreviewWindow::nextPage);
    m_position = new QLabel(this);
    m_position->setObjectName(u"lbl_Seite"_s);
    m_position->setContentsMargins(8, 0, 8, 0);
    m_bar->addWidget(m_position);
    m_bar->addSeparator();
    addAction("cmdClose", tr("&Schliessen"), {K(Qt::Key_Escape), K(QKeySequence::Close)},
              &PreviewWindow::closeWindow);
}

QAction* PreviewWindow::addAction(const char* name, const QString& text, const QList<QKeySequence>& keys,
                                  void (PreviewWindow::*slot)()) {
    QAction* action = m_bar->addAction(text);
    // A tool button drops the mnemonic unless the icon's text has it as well.
    action->setIconText(text);
    action->setObjectName(QString::fromLatin1(name));
    action->setShortcuts(keys);
    action->setToolTip(keys.first().toString(QKeySequence::NativeText));
    common::connectGuarded(common::Origin::User, action, &QAction::triggered, this,
                           [this, slot] { (this->*slot)(); });
    return action;
}

void PreviewWindow::startSize() {
    const QSize screen = QGuiApplication::primaryScreen()->availableSize();
    resize(qMin(900, screen.width() - 40), qMin(960, screen.height() - 60));
    if (m_report.page().isRoll())
        m_preview->setZoomFactor(1.4);
    else
        fitWidth();
}

QScrollBar* PreviewWindow::scrollBar() const {
    return m_preview->findChild<QGraphicsView*>()->verticalScrollBar();
}

void PreviewWindow::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    showTop();
}

/// Fitting to the width, which follows a new size, leaves the view somewhat below the page's head.
void PreviewWindow::showTop() {
    if (m_preview->currentPage() <= 1)
        QTimer::singleShot(0, this, [this] { scrollBar()->setValue(scrollBar()->minimum()); });
}

void PreviewWindow::paint(QPrinter& device) {
    showTop();
    try {
        m_report.print(device, m_dialogs.ShowProgress(tr("Die Seiten werden aufgebaut …")));
    } catch (const GivenUp&) {
        close();
    }
}

void PreviewWindow::printReport() {
    printOn(m_printerName, m_report, m_dialogs);
}

void PreviewWindow::savePdf() {
    const QString title = tr("Als PDF speichern");
    const QString path = m_dialogs.SaveFile(title, m_report.title(), {u"pdf"_s});
    if (path.isEmpty())
        return;
    try {
        saveAsPdf(m_report, path, m_dialogs.ShowProgress(tr("Die Datei wird geschrieben …")));
    } catch (const GivenUp&) {
        return;
    } catch (const common::RunTimeError& error) {
        m_dialogs.MsgBox(error.sentence(), kOk + kStop, title);
    }
}

void PreviewWindow::zoomIn() {
    m_preview->zoomIn(1.2);
}

void PreviewWindow::zoomOut() {
    m_preview->zoomOut(1.2);
}

void PreviewWindow::fitPage() {
    m_preview->fitInView();
}

void PreviewWindow::fitWidth() {
    m_preview->fitToWidth();
}

void PreviewWindow::previousPage() {
    m_preview->setCurrentPage(m_preview->currentPage() - 1);
    showPosition();
}

void PreviewWindow::nextPage() {
    m_preview->setCurrentPage(m_preview->currentPage() + 1);
    showPosition();
}

void PreviewWindow::showPosition() {
    const int page = m_preview->currentPage();
    const int pages = m_preview->pageCount();
    m_position->setText(tr("Seite %1 von %2").arg(page).arg(pages));
    m_previous->setEnabled(page > 1);
    m_next->setEnabled(page < pages);
}

} // namespace platform
