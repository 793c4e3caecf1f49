#pragma once

#include <KdVBLModel/KdProject.h>

#include <QString>
#include <QStringList>

/** What the command line asks for. */
struct StudioOptions
{
    QString takesFolder; ///< absolute; empty: the voice folder of the settings
    KdVBLMODEL::KdFrameRate frameRate = KdVBLMODEL::KdFrameRate::Fps30;
    bool demo = false;   ///< bring virtual devices where there are no real ones
    QString screenshots; ///< absolute folder for pictures of what is recorded; empty: none
    QString skin;        ///< "dark" or "light"; empty: as used last
    QString language;    ///< a code of StudioLanguages; empty: as used last
    double voiceOverSeconds = 0.0; ///< length of the voice-over to record and then quit; 0: none
    double webcamSeconds = 0.0;    ///< the same for a webcam take; it comes second
};

/** A read command line: options, or a text to print instead. */
struct StudioCommandLine
{
    enum class Outcome
    {
        Run,
        ShowHelp,
        Bad
    };

    Outcome outcome = Outcome::Run;
    StudioOptions options;
    QString text; ///< the help, or what is wrong with the command line
};

/**
 * Reads a command line. Touches no file and makes no window, so that a bad one is answered on any
 * machine.
 * @param arguments with the program's name first
 */
StudioCommandLine parseStudioCommandLine(const QStringList& arguments);
