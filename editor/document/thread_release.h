#pragma once

#include <QThreadPool>

#include <memory>
#include <utility>

namespace editor {

/// Destroys a large value in another thread. Nothing else may know what is in it.
template <typename Value>
void releaseInThread(Value value)
{
    QThreadPool::globalInstance()->start([old = std::make_shared<Value>(std::move(value))] {});
}

} // namespace editor
