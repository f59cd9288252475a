#include "message_group.h"

namespace Zar {

MessageGroup*& MessageGroup::current() noexcept
{
    thread_local MessageGroup* group = nullptr;
    return group;
}

} // namespace Zar
