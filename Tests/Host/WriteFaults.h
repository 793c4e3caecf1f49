#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

/**
 * Stands between this process and its writes to one file: looks at each of them, or makes one fail,
 * the way a disk does. Reaches the writes of every library in the process. One at a time; the
 * writes may come from any thread.
 */
class WriteFaults
{
public:
    /** Which call the fault hits. */
    enum class Call
    {
        Write,
        Sync
    };

    /** @param path of the file, which need not exist yet. */
    explicit WriteFaults(const QString& path);
    ~WriteFaults();

    /** Called after every write that was not made to fail, on the writing thread. */
    void onWritten(std::function<void()> look);

    /**
     * From the number-th call on (the first is 1) as many calls as count fail.
     * @param error an errno value; 0: the write is done in part only, which is no failure
     */
    void fail(Call call, int number, int error, int count);

    /** How many calls there were so far, failed ones too. */
    int calls(Call call) const;

private:
    WriteFaults(const WriteFaults&) = delete;
    WriteFaults& operator=(const WriteFaults&) = delete;
};
