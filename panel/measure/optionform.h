#pragma once

#include <QLabel>
#include <QMap>
#include <QScrollArea>

#include <VesmarClient/settings.h>

#include "panel/measure/optionfield.h"

namespace Panel
{

/// The options of a function, drawn from the catalogue. What is wrong stands beside the field.
class OptionForm : public QScrollArea
{
    Q_OBJECT

public:
    explicit OptionForm(const VesmarClient::FunctionInfo& function);

    VesmarClient::Settings settings() const;
    bool isValid() const { return settings().isValid(); }

Q_SIGNALS:
    void changed();

private:
    struct Row {
        OptionField* field;
        QLabel* problem;
    };

    QWidget* createRow(const VesmarClient::Option& option);
    void showProblems();

    QString _function;
    QMap<QString, Row> _rows;
};

} // namespace Panel
