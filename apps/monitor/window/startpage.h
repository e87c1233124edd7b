#ifndef STARTPAGE_H
#define STARTPAGE_H

#include <QScrollArea>

class FileMenu;
class QVBoxLayout;

/** What can be opened, in the middle of the window while nothing is. */
class StartPage : public QScrollArea
{
    Q_OBJECT

public:
    /** @param menu  borrowed: what does all of it */
    explicit StartPage(FileMenu* menu, QWidget* parent = nullptr);

private:
    void fillRecent();
    QWidget* createEntry(QAction* action);

    FileMenu* m_menu;
    QVBoxLayout* m_recent;
};

#endif
