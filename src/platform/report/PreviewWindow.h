#pragma once
#include "platform/Dialogs.h"
#include "platform/report/ReportDocument.h"
#include <QMainWindow>
#include <QPrinter>

class QAction;
class QLabel;
class QPrintPreviewWidget;
class QScrollBar;
class QToolBar;

namespace platform {

/// Shows a report as it will stand on paper. A window of its own that frees itself when closed; several can
/// be open, each keeps the report it was opened with.
class PreviewWindow : public QMainWindow {
    Q_OBJECT
  public:
    /// `printerName` is where the print button prints to; `dialogs` must outlive the window.
    PreviewWindow(ReportDocument report, QString printerName, Dialogs& dialogs);

    const ReportDocument& report() const { return m_report; }

    QPrintPreviewWidget* preview() const { return m_preview; }

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    void addActions();
    QAction* addAction(const char* name, const QString& text, const QList<QKeySequence>& keys,
                       void (PreviewWindow::*slot)());
    void startSize();
    QScrollBar* scrollBar() const;
    void showTop();
    void paint(QPrinter& device);
    void printReport();
    void savePdf();
    void zoomIn();
    void zoomOut();
    void fitPage();
    void fitWidth();
    void previousPage();
    void nextPage();

    void closeWindow() { close(); }

    void showPosition();

    ReportDocument m_report;
    QString m_printerName;
    Dialogs& m_dialogs;
    QPrinter m_device;
    QPrintPreviewWidget* m_preview = nullptr;
    QToolBar* m_bar = nullptr;
    QLabel* m_position = nullptr;
    QAction* m_previous = nullptr;
    QAction* m_next = nullptr;
};

} // namespace platform
