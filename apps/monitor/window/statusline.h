#ifndef STATUSLINE_H
#define STATUSLINE_H

#include <QStatusBar>

class Desk;
class QLabel;

/** What is open, what it brings and what was wrong last, at the lower edge of the window. */
class StatusLine : public QStatusBar
{
    Q_OBJECT

public:
    /** @param desk  borrowed */
    explicit StatusLine(Desk* desk, QWidget* parent = nullptr);

    /** What is open in a few words, for the window's title; empty when nothing is. */
    QString getSummary() const;
    /** What is said of the last problem; empty when there was none, or something worked since. */
    const QString& getLastProblem() const { return m_lastProblem; }

    void noteProblem(const QString& text);
    void refresh();

private:
    QString inputText() const;
    void showCounts();
    void showAsWarning(QLabel* label, bool isWarning);

    Desk* m_desk;
    QLabel* m_input;
    QLabel* m_rate;
    QLabel* m_lost;
    QLabel* m_damaged;
    QLabel* m_problem;
    QString m_lastProblem;
};

#endif
