#pragma once
#include "maintenance/modHandbuch.h"
#include <QTextBlock>
#include <QTextCursor>
#include <QWidget>
#include <memory>

namespace Ui {
class frmHandbuch;
}

/// The user's manual: chapters at the side, the text, and a search in it.
class frmHandbuch : public QWidget {
    Q_OBJECT
  public:
    explicit frmHandbuch(QWidget* parent = nullptr);
    ~frmHandbuch() override;

    /// Leads there; where the paragraph is missing to the chapter. False when there is no such chapter.
    bool showPlace(const modHandbuch::Place& place);
    /// What stands at the top.
    QString textAtTop() const;

    QSize sizeHint() const override { return {1040, 560}; }

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void showText();
    void polishHeadings();
    void polishTables();
    void listChapters();
    void setUpSearch();
    void setUpKeys();
    QTextBlock headingOf(const QString& chapter) const;
    QTextBlock paragraphOf(const QTextBlock& heading, const QString& beginning) const;
    void scrollTo(const QTextBlock& block);
    QTextBlock blockAtTop() const;
    void followLink(const QString& anchor);
    /// The chapter that is being read is marked at the side.
    void markChapter();
    void search();
    void goToHit(qsizetype hit);
    void keepInSight();
    void nextHit(int step);

    std::unique_ptr<Ui::frmHandbuch> m_ui;
    /// The headings at the side, as they stand there.
    QList<QTextBlock> m_headings;
    QList<QTextCursor> m_hits;
    qsizetype m_hit = -1;
};
