#pragma once

// The signal libraries of the comparison behind one shape: `connect()` adds a slot and returns a
// handle, `disconnect(handle)` ends it, `emit()` calls the slots.

#include <kyr_cpp_utils/signal.h>

#include <QObject>

#include <benchmark/benchmark.h>
#include <boost/signals2/signal.hpp>
#include <sigc++/sigc++.h>

#include <atomic>
#include <cstdint>
#include <mutex>
#include <vector>

/// Does too little to hide the cost of the call, and shares nothing between threads.
class Slot
{
public:
    void operator()() const { benchmark::DoNotOptimize(this); }

private:
    [[maybe_unused]] void* m_receiver = nullptr;
};

class OurSignal
{
public:
    static constexpr bool threadSafe = true;
    using Handle = vex::Connection;

    Handle connect() { return m_signal.connect(Slot()); }
    static void disconnect(Handle& handle) { handle.disconnect(); }
    void emit() { m_signal(); }

private:
    vex::Signal<void()> m_signal;
};

class BoostSignal
{
public:
    static constexpr bool threadSafe = true;
    using Handle = boost::signals2::connection;

    Handle connect() { return m_signal.connect(Slot()); }
    static void disconnect(Handle& handle) { handle.disconnect(); }
    void emit() { m_signal(); }

private:
    boost::signals2::signal<void()> m_signal;
};

/// Knows no threads.
class SigcSignal
{
public:
    static constexpr bool threadSafe = false;
    using Handle = sigc::connection;

    Handle connect() { return m_signal.connect(Slot()); }
    static void disconnect(Handle& handle) { handle.disconnect(); }
    void emit() { m_signal.emit(); }

private:
    sigc::signal<void> m_signal;
};

class QtSender : public QObject
{
    Q_OBJECT

Q_SIGNALS:
    void emitted();
};

class QtDirectSignal
{
public:
    static constexpr bool threadSafe = true;
    using Handle = QMetaObject::Connection;

    Handle connect()
    {
        return QObject::connect(&m_sender, &QtSender::emitted, &m_sender, Slot(),
                                Qt::DirectConnection);
    }
    static void disconnect(Handle& handle) { QObject::disconnect(handle); }
    void emit() { Q_EMIT m_sender.emitted(); }

private:
    QtSender m_sender;
};

/// No signal: what one lock and one pin a slot cost alone, in a walk over the same records that
/// calls them. It keeps none of a signal's promises.
class BareLoop
{
public:
    static constexpr bool threadSafe = true;
    using Handle = int;

    ~BareLoop()
    {
        for (Record* record : m_records)
            delete record;
    }
    Handle connect()
    {
        m_records.push_back(new CallableRecord);
        return 0;
    }
    static void disconnect(Handle&) {}
    void emit()
    {
        Record* left = nullptr;
        for (std::size_t next = 0; next <= m_records.size(); ++next) {
            Record* const record = next < m_records.size() ? m_records[next] : nullptr;
            {
                const std::lock_guard lock(m_mutex);
                if (record)
                    record->pins.fetch_add(1, std::memory_order_acquire);
            }
            if (left)
                left->pins.fetch_sub(1, std::memory_order_acq_rel);
            if (record)
                record->call();
            left = record;
        }
    }

private:
    struct Record
    {
        virtual ~Record() = default;
        virtual void call() = 0;
        std::atomic<std::uint64_t> pins{0};
    };
    struct CallableRecord final : Record
    {
        void call() override { m_slot(); }
        Slot m_slot;
    };

    std::mutex m_mutex;
    std::vector<Record*> m_records;
};
