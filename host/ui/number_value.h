#pragma once

#include <QVariant>

namespace lumo::datamodels::proxy {

/// Whether filters and sorting take a value for a number. A flag is one, 0 or 1.
inline bool isNumber(const QVariant& value)
{
    switch (value.userType()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
    case QMetaType::Float:
    case QMetaType::Bool:
        return true;
    default:
        return false;
    }
}

} // namespace lumo::datamodels::proxy
