#include "confidentialaction.h"

#include "desk.h"
#include "preferencesdialog.h"

#include <QMessageBox>

ConfidentialAction::ConfidentialAction(Desk* desk, QWidget* window)
    : QAction(tr("Con&fidential Data"), window)
    , m_window(window)
{
    setCheckable(true);
    setToolTip(tr("Show fields that are marked as confidential"));
    connect(this, &QAction::toggled, desk, &Desk::setConfidentialShown);
    connect(this, &QAction::triggered, this, &ConfidentialAction::warn); // the dialog warns by itself
}

void ConfidentialAction::warn(bool shown)
{
    if (!shown)
        return;
    QMessageBox* const box =
        new QMessageBox(QMessageBox::Warning, m_window->windowTitle(), PreferencesDialog::getConfidentialWarning(),
                        QMessageBox::Ok | QMessageBox::Cancel, m_window);
    box->setAttribute(Qt::WA_DeleteOnClose);
    connect(box, &QDialog::rejected, this, [this]() { setChecked(false); });
    box->open();
}
