#include "measurementwindow.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLineEdit>

#include <VesmarClient/functions.h>

using namespace VesmarClient;

namespace
{

QWidget* createField(const Option& option)
{
    switch (option.kind) {
    case OptionKind::Choice: {
        auto* const box = new QComboBox;
        box->addItem(QObject::tr("not set"));
        for (const Choice& choice : option.choices) {
            box->addItem(choice.title, choice.identifier);
        }
        return box;
    }
    case OptionKind::Flag:
        return new QCheckBox;
    default: {
        auto* const line = new QLineEdit;
        line->setPlaceholderText(option.defaultValue.toString());
        return line;
    }
    }
}

/// Invalid while nothing is set.
QVariant valueOf(const QWidget* field)
{
    if (const auto* const box = qobject_cast<const QComboBox*>(field)) {
        return box->currentData();
    }
    if (const auto* const check = qobject_cast<const QCheckBox*>(field)) {
        return check->isChecked() ? QVariant(true) : QVariant();
    }
    const QString text = qobject_cast<const QLineEdit*>(field)->text();
    return text.isEmpty() ? QVariant() : QVariant(text);
}

} // namespace

MeasurementWindow::MeasurementWindow()
{
    for (const FunctionInfo& function : Functions::all()) {
        _function.addItem(function.title, function.identifier);
    }
    layOut();
    watchInstrument();
    showLink();
    showOptions();
    _instrument.open();
}

void MeasurementWindow::layOut()
{
    _function.setObjectName(QStringLiteral("function"));
    _readings.setObjectName(QStringLiteral("readings"));
    _message.setObjectName(QStringLiteral("message"));
    _start.setObjectName(QStringLiteral("start"));
    _stop.setObjectName(QStringLiteral("stop"));
    _message.setWordWrap(true);
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(&_start);
    buttons->addWidget(&_stop);
    auto* const column = new QVBoxLayout(this);
    column->addWidget(&_link);
    column->addWidget(&_function);
    _options = new QFormLayout;
    column->addLayout(_options);
    column->addWidget(&_readings);
    column->addWidget(&_message);
    column->addLayout(buttons);
}

void MeasurementWindow::watchInstrument()
{
    connect(&_function, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &MeasurementWindow::showOptions);
    connect(&_start, &QPushButton::clicked, this, &MeasurementWindow::start);
    connect(&_stop, &QPushButton::clicked, this, [this] { _measurement->abort(); });
    connect(&_instrument, &Instrument::linkStateChanged, this, &MeasurementWindow::showLink);
    connect(&_instrument, &Instrument::isBusyChanged, this, &MeasurementWindow::showLink);
    connect(&_instrument, &Instrument::openFailed, this, [this](const Failure& failure) {
        _message.setText(failure.whatHappened + QLatin1Char(' ') + failure.nextStep);
    });
}

void MeasurementWindow::showLink()
{
    const bool isUp = _instrument.linkState() == LinkState::Up;
    _link.setText(isUp ? tr("Connected to %1").arg(_instrument.identity().serialNumber)
                       : tr("Not connected"));
    _start.setEnabled(isUp && !_instrument.isBusy());
    _stop.setEnabled(_measurement && !_measurement->isFinished());
    if (_isClosing && _instrument.linkState() == LinkState::Closed) {
        close();
    }
}

void MeasurementWindow::showOptions()
{
    while (_options->rowCount() > 0) {
        _options->removeRow(0);
    }
    for (const Option& option : Functions::find(_function.currentData().toString()).options) {
        QWidget* const field = createField(option);
        field->setObjectName(option.identifier);
        _options->addRow(option.title, field);
    }
}

Settings MeasurementWindow::settings() const
{
    Settings settings(_function.currentData().toString());
    for (int row = 0; row < _options->rowCount(); ++row) {
        const QWidget* const field = _options->itemAt(row, QFormLayout::FieldRole)->widget();
        settings.set(field->objectName(), valueOf(field));
    }
    return settings;
}

void MeasurementWindow::start()
{
    delete _measurement;
    _readings.clear();
    _message.clear();
    _measurement = _instrument.measure(settings());
    connect(_measurement, &Measurement::reading, this, &MeasurementWindow::showResult);
    connect(_measurement, &Measurement::finished, this, &MeasurementWindow::showEnd);
    showLink();
}

void MeasurementWindow::showResult(const Result& result)
{
    QStringList texts;
    for (const Reading& reading : result.readings()) {
        texts.append(reading.name + QLatin1Char(' ') + reading.text());
    }
    _readings.setText(texts.join(QStringLiteral("    ")));
}

void MeasurementWindow::showEnd(Outcome outcome)
{
    const Failure failure = _measurement->failure();
    QStringList words;
    if (outcome == Outcome::Completed) {
        words.append(tr("Completed."));
    } else if (outcome == Outcome::Aborted) {
        words.append(tr("Aborted."));
    } else {
        words << failure.whatHappened << failure.causes;
    }
    words.append(_measurement->isStopConfirmed()
                     ? tr("The instrument has stopped.")
                     : tr("It is not confirmed that the instrument has stopped."));
    _message.setText(words.join(QLatin1Char(' ')));
    showLink();
}

void MeasurementWindow::closeEvent(QCloseEvent* event)
{
    _isClosing = true;
    _instrument.close();
    event->setAccepted(_instrument.linkState() == LinkState::Closed);
}
