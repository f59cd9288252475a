#pragma once

#include <QString>

#include <optional>

namespace editor {

/// What a person types into the field of a number: a number, or what becomes of the present one:
/// "+=2", "-=2", "*2", "/2", "*=2", "/=2". A decimal comma will do.
struct NumberEntry
{
    enum class Operation
    {
        Set,
        Add,
        Subtract,
        Multiply,
        Divide,
    };

    Operation operation = Operation::Set;
    double operand = 0;

    /// Nothing for a text that is none of these, or would not give a number.
    static std::optional<NumberEntry> parse(const QString& text);
    /// Rounded to nine digits, away from the noise that sums of binary fractions gather.
    double apply(double present) const;
};

} // namespace editor
