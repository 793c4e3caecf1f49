#pragma once

#include <QtGlobal>

/**
 * Tells the host that an operation of the engine begins, and, when it goes out of scope by whatever
 * path, that it has ended; so a host can hold back work of its own meanwhile. Silent on any thread
 * but the application's main one.
 */
class KdPileInsetionNotice
{
public:
    /** @param label names the operation; a text that is never freed. */
    explicit KdPileInsetionNotice(const char* label);
    ~KdPileInsetionNotice();

private:
    Q_DISABLE_COPY(KdPileInsetionNotice)

    const char* const m_label;
};
