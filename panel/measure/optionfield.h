#pragma once

#include <QVariant>
#include <QWidget>

#include <VesmarClient/functions.h>

namespace Panel
{

/// Where an option of a function is set.
class OptionField : public QWidget
{
    Q_OBJECT

public:
    /// Made for the option's kind, with its default.
    static OptionField* create(const VesmarClient::Option& option);

    /// Invalid while nothing is set.
    virtual QVariant value() const = 0;

Q_SIGNALS:
    void changed();
};

} // namespace Panel
