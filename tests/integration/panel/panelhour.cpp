// Shows readings live, ten a second for the given number of minutes, and prints what that costs: processor
// time and memory. The program runs in virtual time, so that an hour lasts as long as it keeps the processor
// busy.
#include <sys/resource.h>

#include <cmath>
#include <cstdio>

#include <QApplication>
#include <QFile>
#include <QTimer>

#include "panel/kit/theme.h"
#include "panel/measure/liveview.h"

using VesmarClient::Functions;
using VesmarClient::Reading;
using VesmarClient::Result;

namespace
{

constexpr int TimeBetweenReadings = 100; // In milliseconds.
constexpr int ReadingsOfMinute = 60 * 1000 / TimeBetweenReadings;
constexpr double MostOfACore = 0.15;
// In MiB, from the end of the second record to that of the last one. Up to then the heap finds its size.
constexpr double MostGrowth = 2;

double processorSeconds()
{
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double residentMebibytes()
{
    constexpr double PagesOfMebibyte = 256;
    QFile file(QStringLiteral("/proc/self/statm"));
    return file.open(QIODevice::ReadOnly) ? file.readAll().split(' ').at(1).toDouble() / PagesOfMebibyte : 0;
}

Result readingAt(int number)
{
    QVector<Reading> readings;
    for (const auto& info : Functions::find(VesmarClient::Function::POWER).readings) {
        const double value =
            230 + std::sin(number * 0.01 * (1 + readings.size())) + std::sin(number * 7.0) / 10;
        readings.append({info.identifier, value, true, QString(), -1});
    }
    return {VesmarClient::Function::POWER, readings, {}};
}

/// Feeds the view with one record after the other, and says what that has cost.
class Feeder : public QObject
{
public:
    Feeder(int records, int minutes) : _records(records), _minutes(minutes)
    {
        _view.resize(660, 330);
        beginRecord();
        _view.QWidget::show();
        startTimer(TimeBetweenReadings, Qt::PreciseTimer);
    }

    bool isCheap() const { return _share < MostOfACore && _memory.last() - _memory.at(1) < MostGrowth; }

protected:
    void timerEvent(QTimerEvent* /*event*/) override
    {
        const int number = _record->times.size();
        _record->append(number * TimeBetweenReadings / 1000.0, readingAt(number));
        _view.refresh();
        if (_record->times.size() == _minutes * ReadingsOfMinute) {
            tell();
            beginRecord();
        }
        if (_memory.size() == _records) {
            QApplication::quit();
        }
    }

private:
    void beginRecord()
    {
        _record.reset(new Panel::Record);
        _record->settings = VesmarClient::Settings("power");
        _view.show(_record);
    }

    void tell()
    {
        _memory.append(residentMebibytes());
        _share = (processorSeconds() - _before) / (_memory.size() * _minutes * 60);
        std::printf("%d min: %.1f %% of a core, %.1f MiB\n", _memory.size() * _minutes, _share * 100,
                    _memory.last());
        std::fflush(stdout);
    }

    int _records;
    int _minutes;
    Panel::LiveView _view{Functions::find(VesmarClient::Function::POWER)};
    QSharedPointer<Panel::Record> _record;
    double _before = processorSeconds();
    double _share = 0;
    QVector<double> _memory; // after each record
};

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_NO_GLIB", "1"); // Its loop would be one more that has to wait in virtual time.
    QApplication application(argc, argv);
    Panel::applyTheme(Panel::Theme::Light);
    Feeder feeder(3, argc > 1 ? QByteArray(argv[1]).toInt() : 60);
    QApplication::exec();
    return feeder.isCheap() ? 0 : 1;
}
