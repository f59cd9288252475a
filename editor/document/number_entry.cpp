#include "number_entry.h"

#include <cmath>
#include <utility>

namespace editor {

namespace {

constexpr int digits = 9;

using Operation = NumberEntry::Operation;

/// The operation that the text begins with, and how many characters say so.
std::pair<Operation, int> operationOf(const QString& text)
{
    static const std::pair<const char*, Operation> signs[] = {
        {"+=", Operation::Add},    {"-=", Operation::Subtract}, {"*=", Operation::Multiply},
        {"/=", Operation::Divide}, {"*", Operation::Multiply},  {"/", Operation::Divide},
    };
    for (const auto& [sign, operation] : signs) {
        if (text.startsWith(QLatin1String(sign)))
            return {operation, int(qstrlen(sign))};
    }
    return {Operation::Set, 0};
}

} // namespace

std::optional<NumberEntry> NumberEntry::parse(const QString& text)
{
    const QString trimmed = text.trimmed();
    const auto [operation, length] = operationOf(trimmed);
    QString number = trimmed.mid(length).trimmed();
    bool isNumber = false;
    const double operand = number.replace(QLatin1Char(','), QLatin1Char('.')).toDouble(&isNumber);
    if (!isNumber || !std::isfinite(operand) || (operation == Operation::Divide && operand == 0))
        return std::nullopt;
    return NumberEntry{operation, operand};
}

double NumberEntry::apply(double present) const
{
    switch (operation) {
    case Operation::Set:
        return operand;
    case Operation::Add:
        present += operand;
        break;
    case Operation::Subtract:
        present -= operand;
        break;
    case Operation::Multiply:
        present *= operand;
        break;
    case Operation::Divide:
        present /= operand;
        break;
    }
    return QString::number(present, 'g', digits).toDouble();
}

} // namespace editor
