// What the window keeps over a restart. Showing confidential data is left out on purpose: it is asked for anew each
// time.

#include "mainwindow.h"

#include "messagestatisticswidget.h"
#include "messagetreewidget.h"
#include "treetools.h"
#include "watchbar.h"

#include <QAction>
#include <QCloseEvent>
#include <QFile>
#include <QSettings>

void MainWindow::setSettings(std::unique_ptr<QSettings> settings)
{
    m_settings = std::move(settings);
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (m_settings) {
        saveSettings(*m_settings);
        m_settings->sync();
    }
    QMainWindow::closeEvent(event);
}

void MainWindow::saveSettings(QSettings& settings)
{
    settings.beginGroup(QLatin1String("window"));
    settings.setValue(QLatin1String("geometry"), saveGeometry());
    settings.setValue(QLatin1String("state"), saveState());
    settings.endGroup();

    settings.beginGroup(QLatin1String("tree"));
    m_tree->saveSettings(settings);
    m_tree->saveExpansionState(settings);
    settings.setValue(QLatin1String("showVirtualFields"), m_virtualFields->isChecked());
    settings.setValue(QLatin1String("primaryFieldsOnly"), m_primaryOnly->isChecked());
    settings.setValue(QLatin1String("addAutomatically"), m_addAutomatically->isChecked());
    settings.setValue(QLatin1String("added"), QStringList(m_treeChoices.keys(true)));
    settings.setValue(QLatin1String("removed"), QStringList(m_treeChoices.keys(false)));
    settings.endGroup();

    m_tools->saveSettings(settings);

    settings.beginGroup(QLatin1String("statistics"));
    m_statistics->writeSettings(settings);
    settings.endGroup();

    settings.beginGroup(QLatin1String("watches"));
    m_watches->saveSettings(settings);
    settings.endGroup();

    settings.setValue(QLatin1String("recentFiles"), m_recentFiles);
    rememberForms();
    settings.setValue(QLatin1String("forms"), m_wantedForms);
    settings.setValue(QLatin1String("definitions"), m_factory.getDefinitionsPath());
}

void MainWindow::restoreSettings(QSettings& settings)
{
    // First, because what follows names types and fields of the definitions.
    const QString definitions = settings.value(QLatin1String("definitions")).toString();
    if (m_factory.getDefinitionsPath().isEmpty() && !definitions.isEmpty() && QFile::exists(definitions))
        loadDialect(definitions, QString());
    m_wantedForms += settings.value(QLatin1String("forms")).toStringList();
    m_recentFiles = settings.value(QLatin1String("recentFiles")).toStringList();

    settings.beginGroup(QLatin1String("window"));
    restoreGeometry(settings.value(QLatin1String("geometry")).toByteArray());
    m_arranged = restoreState(settings.value(QLatin1String("state")).toByteArray());
    settings.endGroup();

    settings.beginGroup(QLatin1String("tree"));
    m_virtualFields->setChecked(settings.value(QLatin1String("showVirtualFields"), true).toBool());
    m_primaryOnly->setChecked(settings.value(QLatin1String("primaryFieldsOnly"), false).toBool());
    m_addAutomatically->setChecked(settings.value(QLatin1String("addAutomatically"), true).toBool());
    for (const bool isAdded : {true, false}) {
        const QString key = isAdded ? QLatin1String("added") : QLatin1String("removed");
        const QStringList names = settings.value(key).toStringList();
        for (const QString& name : names)
            m_treeChoices.insert(name, isAdded);
    }
    m_tree->loadExpansionState(settings);
    if (settings.contains(QLatin1String("headerstate")))
        m_tree->restoreSettings(settings);
    settings.endGroup();

    m_tools->restoreSettings(settings);

    settings.beginGroup(QLatin1String("statistics"));
    m_statistics->readSettings(settings);
    settings.endGroup();

    settings.beginGroup(QLatin1String("watches"));
    m_watches->restoreSettings(settings);
    settings.endGroup();
}
