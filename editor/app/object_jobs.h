#pragma once

#include <editor/app/sliced_job.h>
#include <editor/app/threaded_work.h>

#include <editor/document/scene_snapshot.h>
#include <editor/files/object_text.h>

#include <QCoreApplication>

#include <memory>

namespace editor {

/// Makes a text of objects: copies them in slices, then writes in a thread.
class ObjectCopyJob final : public SlicedJob
{
    Q_DECLARE_TR_FUNCTIONS(ObjectCopyJob)

public:
    /// As `snapshotOf` takes them; they must stay as they are until the job ends.
    explicit ObjectCopyJob(const SceneObjects& objects);

    bool advance(std::chrono::nanoseconds time) override;
    double progress() const override;
    /// Of a finished job.
    const ObjectText& result() const { return m_result; }

private:
    SceneSnapshot m_snapshot;
    bool m_isCopied = false;
    ObjectText m_result;
    std::unique_ptr<ThreadedWork> m_writing; // goes first, for it uses the others
};

/// Makes objects of a text, in a thread.
class ObjectPasteJob final : public SlicedJob
{
public:
    explicit ObjectPasteJob(const QByteArray& text);

    bool advance(std::chrono::nanoseconds time) override;
    double progress() const override { return m_reading.progress(); }
    /// Of a finished job.
    const ObjectsOfText& result() const { return m_result; }

private:
    ObjectsOfText m_result;
    ThreadedWork m_reading;
};

} // namespace editor
