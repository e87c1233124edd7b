#include "layoutmenu.h"

#include "docklayout.h"

#include <QInputDialog>
#include <QSettings>

static const char Key[] = "layouts";
// More in a settings file than anybody names is a fault of the file.
static const int MostRestored = 100;

LayoutMenu::LayoutMenu(DockLayout* docks, QWidget* parent)
    : QMenu(tr("&Layouts"), parent)
    , m_docks(docks)
{
    addAction(tr("&Reset"), m_docks, &DockLayout::reset);
    addAction(tr("&Save As..."), this, &LayoutMenu::askName);
    m_remove = addMenu(tr("Re&move"));
    addSeparator();
    fill();
}

void LayoutMenu::fill()
{
    qDeleteAll(m_entries);
    m_entries.clear();
    m_remove->setEnabled(!m_states.isEmpty());
    const QStringList names = m_states.keys();
    for (const QString& name : names) {
        const QString text = QString(name).replace(QLatin1Char('&'), QLatin1String("&&"));
        m_entries.append(addAction(text, m_docks, [this, name]() { m_docks->restore(m_states.value(name)); }));
        m_entries.append(m_remove->addAction(text));
        // Not while it is what is triggered.
        connect(
            m_entries.last(), &QAction::triggered, this,
            [this, name]() {
                m_states.remove(name);
                fill();
            },
            Qt::QueuedConnection);
    }
}

void LayoutMenu::save(const QString& name)
{
    if (name.trimmed().isEmpty())
        return;
    m_states.insert(name.trimmed(), m_docks->save());
    fill();
}

void LayoutMenu::askName()
{
    QInputDialog* const dialog = new QInputDialog(parentWidget());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(tr("Save Layout"));
    dialog->setLabelText(tr("&Name; one that exists is replaced:"));
    connect(dialog, &QInputDialog::textValueSelected, this, &LayoutMenu::save);
    dialog->open();
}

void LayoutMenu::saveSettings(QSettings& settings) const
{
    settings.remove(QLatin1String(Key));
    settings.beginWriteArray(QLatin1String(Key), int(m_states.size()));
    int index = 0;
    for (auto state = m_states.begin(); state != m_states.end(); ++state) {
        settings.setArrayIndex(index++);
        settings.setValue(QLatin1String("name"), state.key());
        settings.setValue(QLatin1String("state"), state.value());
    }
    settings.endArray();
}

void LayoutMenu::restoreSettings(QSettings& settings)
{
    const int count = qMin(settings.beginReadArray(QLatin1String(Key)), MostRestored);
    for (int i = 0; i < count; ++i) {
        settings.setArrayIndex(i);
        const QString name = settings.value(QLatin1String("name")).toString();
        if (!name.isEmpty())
            m_states.insert(name, settings.value(QLatin1String("state")).toByteArray());
    }
    settings.endArray();
    fill();
}
