#ifndef PREFERENCESDIALOG_H
#define PREFERENCESDIALOG_H

#include "preferences.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QLabel;
class QLineEdit;
class QScrollArea;
class QSpinBox;
class QVBoxLayout;

/** Lets the user set the preferences. */
class PreferencesDialog : public QDialog
{
    Q_OBJECT

public:
    /** @param confidential  whether confidential fields are shown now; this is never kept over a restart */
    PreferencesDialog(const Preferences& preferences, bool confidential, QWidget* parent = nullptr);

    Preferences getPreferences() const;
    bool isConfidentialShown() const;
    /** What the user is told who wants to see confidential data, here or elsewhere. */
    static QString getConfidentialWarning();

Q_SIGNALS:
    /** What is set is to be used: at OK and Apply. */
    void applied();

private:
    QWidget* createDisplay(const Preferences& preferences);
    QWidget* createData(const Preferences& preferences, bool confidential);
    void browse();
    QSize getRoom() const;
    void showWarning(bool shown);

    QScrollArea* m_area;
    QVBoxLayout* m_page;
    QSpinBox* m_tick;
    QSpinBox* m_digits;
    QSpinBox* m_decimals;
    QCheckBox* m_highlight;
    QComboBox* m_theme;
    QComboBox* m_language;
    QSpinBox* m_silence;
    QDoubleSpinBox* m_timeOut;
    QLineEdit* m_annotations;
    QCheckBox* m_confidential;
    QLabel* m_warning;
};

#endif
