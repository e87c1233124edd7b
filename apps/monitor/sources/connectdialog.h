#ifndef CONNECTDIALOG_H
#define CONNECTDIALOG_H

#include "sourcefactory.h"

#include <QDialog>

#include <functional>

class AddressForm;
class QComboBox;
class QLabel;
class QLineEdit;
class RateChoice;

/** Asks for a source and the definitions that its messages are decoded with. Stays until it is open or given up. */
class ConnectDialog : public QDialog
{
    Q_OBJECT

public:
    /** Opens what was asked for; false with one sentence for the user. */
    using Opener = std::function<bool(const SourceOptions& options, QString* error)>;

    ConnectDialog(SourceFactory* factory, const Opener& opener, QWidget* parent = nullptr);

    /** What the controls say now. */
    SourceOptions getOptions() const;
    /** Sets the controls, such as to what was used last. */
    void setOptions(const SourceOptions& options);

    /** Offers these to fill in. Borrowed for the moment. */
    void offer(const QVector<SourceOptions>& recent);
    /** Tells what is wrong; empty for nothing. */
    void showError(const QString& text);

    void accept() override;

private:
    void followDefinitions();
    void followRecording();

    SourceFactory* m_factory;
    Opener m_opener;
    QLabel* m_recentLabel;
    QComboBox* m_recent;
    AddressForm* m_address;
    QLabel* m_rateLabel;
    RateChoice* m_rate;
    QLineEdit* m_name;
    QLineEdit* m_definitions;
    QLineEdit* m_imports;
    QComboBox* m_type;
    QComboBox* m_framing;
    QLabel* m_errorSign;
    QLabel* m_error;
    const InputKind* m_kind = nullptr; // that it is as high as
};

#endif
