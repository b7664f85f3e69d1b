#include "panel/measure/optionfield.h"

#include "panel/measure/choicefield.h"
#include "panel/measure/numberfield.h"

namespace Panel
{

using VesmarClient::Option;
using VesmarClient::OptionKind;

OptionField* OptionField::create(const Option& option)
{
    if (option.kind == OptionKind::Integer || option.kind == OptionKind::Decimal) {
        return new NumberField(option);
    }
    return new ChoiceField(option);
}

} // namespace Panel
