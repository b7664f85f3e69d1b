#pragma once

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QWidget>

#include <VesmarClient/instrument.h>

/// Everything of a measurement in one window.
class MeasurementWindow : public QWidget
{
    Q_OBJECT

public:
    MeasurementWindow();

protected:
    /// The window stays until the line is given back: until then a measurement may still be being stopped.
    void closeEvent(QCloseEvent* event) override;

private:
    void layOut();
    void watchInstrument();
    void showLink();
    void showOptions();
    void start();
    void showResult(const VesmarClient::Result& result);
    void showEnd(VesmarClient::Outcome outcome);
    VesmarClient::Settings settings() const;

    VesmarClient::Instrument _instrument;
    QPointer<VesmarClient::Measurement> _measurement;
    QLabel _link;
    QComboBox _function;
    QFormLayout* _options = nullptr; // a child
    QLabel _readings;
    QLabel _message;
    QPushButton _start{tr("Start")};
    QPushButton _stop{tr("Stop")};
    bool _isClosing = false;
};
