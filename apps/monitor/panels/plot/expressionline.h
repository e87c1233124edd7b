#ifndef EXPRESSIONLINE_H
#define EXPRESSIONLINE_H

#include <QWidget>

class PlotPanel;
class QLabel;
class QLineEdit;

/** Where somebody writes what a line is computed from. Says below what is wrong with it, and where. */
class ExpressionLine : public QWidget
{
    Q_OBJECT

public:
    /** @param panel  whose lines have letters meanwhile, and which draws the new one; borrowed */
    explicit ExpressionLine(PlotPanel* panel);

    /** Begins; the list of lines says their letters. */
    void open();
    void close();
    QLineEdit* getEdit() const { return m_edit; }
    /** What is said below. */
    QString getText() const;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void check();
    void take();

    PlotPanel* m_panel;
    QLineEdit* m_edit;
    QLabel* m_text;
};

#endif
