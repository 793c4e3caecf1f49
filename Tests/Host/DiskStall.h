#pragma once

/**
 * A disk that does not say how much room it has, for as long as this lives: whoever asks, through
 * whatever library, waits. One at a time. Needs an executable that exports its symbols.
 */
class DiskStall
{
public:
    DiskStall();
    ~DiskStall() { letGo(); }

    /** Those who ask get their answer. */
    void letGo();
    /** Whether somebody waits. */
    bool isAsked() const;

private:
    DiskStall(const DiskStall&) = delete;
    DiskStall& operator=(const DiskStall&) = delete;
};
