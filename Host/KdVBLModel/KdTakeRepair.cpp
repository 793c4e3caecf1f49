#include "KdTakeRepair.h"

#include "KdDisk.h"
#include "KdMp4Bytes.h"
#include "KdMp4MovieReader.h"
#include "KdMp4MovieWriter.h"
#include "KdTakeCheck.h"
#include "KdTakeLayout.h"

#include <QFile>

#include <gst/gst.h>

#include <limits>

namespace {

constexpr qint64 kMostHeader = Q_INT64_C(256) * 1024 * 1024;
constexpr qint64 kMostFragmentHeader = Q_INT64_C(64) * 1024 * 1024;
// A frame of AAC has at most 6144 bit for each of two channels.
constexpr qint64 kMostLastSample = 1536;
constexpr int kHalfWay = 50;

using Outcome = RepairResult::Outcome;
using Reason = RepairResult::Reason;
using State = KdTakeLayout::State;

RepairResult result(Outcome outcome, const QString& message, qint64 durationMs = 0)
{
    RepairResult made;
    made.outcome = outcome;
    made.message = message;
    made.durationMs = durationMs;
    return made;
}

RepairResult failed(Reason reason, const QString& message)
{
    RepairResult made = result(Outcome::Failed, message);
    made.reason = reason;
    return made;
}

int frames(const KdMp4Movie& movie)
{
    int sum = 0;
    for (const KdMp4Track& track : movie.tracks) {
        sum += track.samples.size();
    }
    return sum;
}

/** One repair of one open file. */
class Repair
{
public:
    Repair(const QString& path, const KdTakeRepair::Progress& progress)
        : m_file(path), m_progress(progress)
    {
    }

    RepairResult run();

private:
    bool goesOn(int percent) const { return !m_progress || m_progress(percent); }
    bool readFragments();
    void takeLastSample(const KdMp4Box& media);
    RepairResult finalise();
    bool writeAt(qint64 position, const QByteArray& bytes);
    bool sync();
    bool change(qint64 position, const QByteArray& bytes);
    bool closeMedia();
    bool appendIndex(const QByteArray& index);
    void undo();
    RepairResult noSpace();
    RepairResult checked();

    struct Change
    {
        qint64 position;
        QByteArray before;
    };

    QFile m_file;
    const KdTakeRepair::Progress& m_progress;
    KdTakeLayout m_layout;
    KdMp4Movie m_movie;
    QVector<Change> m_changes; ///< of bytes that were there, first to last
};

RepairResult Repair::run()
{
    if (!m_file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly | QIODevice::Unbuffered)) {
        return failed(Reason::CannotOpen, QStringLiteral("The file %1 cannot be opened: %2.")
                                              .arg(m_file.fileName(), m_file.errorString()));
    }
    m_layout = KdTakeLayout::of(&m_file);
    if (m_layout.state == State::NoIndex) {
        return result(
            Outcome::NothingRecoverable,
            QStringLiteral("The recording ended before its first half second was complete."));
    }
    m_movie = KdMp4MovieReader::read(KdMp4Boxes::content(&m_file, m_layout.header, kMostHeader),
                                     m_file.size());
    if (m_layout.state != State::Whole && !readFragments()) {
        return result(Outcome::Cancelled, QStringLiteral("The repair was cancelled."));
    }
    if (frames(m_movie) == 0) {
        return result(Outcome::NothingRecoverable,
                      QStringLiteral("There is no sound or picture in the recording."));
    }
    if (m_layout.state == State::Whole) {
        return result(Outcome::Repaired, QStringLiteral("The recording was complete already."),
                      m_movie.durationMs());
    }
    return finalise();
}

bool Repair::readFragments()
{
    const QVector<KdMp4Box> boxes =
        KdMp4Boxes::between(&m_file, m_layout.header.end(), m_layout.mediaEnd);
    for (const KdMp4Box& box : boxes) {
        if (box.type == kdFourCc("moof")) {
            KdMp4FragmentReader::append(&m_movie,
                                        KdMp4Boxes::content(&m_file, box, kMostFragmentHeader),
                                        box.offset, m_layout.mediaEnd);
        }
        if (!goesOn(int(kHalfWay * box.end() / qMax<qint64>(m_layout.mediaEnd, 1)))) {
            return false;
        }
    }
    if (m_layout.state == State::Hidden && !boxes.isEmpty()) {
        takeLastSample(boxes.last());
    }
    return true;
}

// At the end of a take the muxer writes one last sample of each track without a fragment to name
// it. With a single track it is known whose that is.
void Repair::takeLastSample(const KdMp4Box& media)
{
    const bool isOne = m_movie.tracks.size() == 1 && !m_movie.tracks.first().samples.isEmpty();
    if (!isOne || media.type != kdFourCc("mdat") || media.contentSize() > kMostLastSample ||
        media.contentSize() <= 0) {
        return;
    }
    KdMp4Track& track = m_movie.tracks.first();
    KdMp4Sample sample = track.samples.last();
    sample.offset = media.contentOffset();
    sample.size = quint32(media.contentSize());
    track.samples.append(sample);
    track.duration += sample.duration;
}

RepairResult Repair::finalise()
{
    if (m_layout.slot < 0) {
        return failed(Reason::Foreign, QStringLiteral("The file was not written by this program."));
    }
    if (!closeMedia() || !appendIndex(KdMp4MovieWriter::write(m_movie))) {
        undo();
        return noSpace();
    }
    // The moment at which the file changes from the one kind to the other.
    if (!change(m_layout.slot, KdTakeLayout::mediaHeader(m_layout.slot, m_layout.mediaEnd)) ||
        !sync()) {
        undo();
        return failed(Reason::DiskError,
                      QStringLiteral("The disk refused the change: %1.").arg(m_file.errorString()));
    }
    return checked();
}

bool Repair::writeAt(qint64 position, const QByteArray& bytes)
{
    return m_file.seek(position) && m_file.write(bytes) == bytes.size();
}

bool Repair::sync()
{
    return KdDisk::syncFile(m_file.fileName(), nullptr);
}

bool Repair::change(qint64 position, const QByteArray& bytes)
{
    if (!m_file.seek(position)) {
        return false;
    }
    m_changes.append({position, m_file.read(bytes.size())});
    return writeAt(position, bytes);
}

// Media data of a fragment that was never complete reaches to the end of the file, whatever comes:
// an index behind it would not be seen when this is interrupted.
bool Repair::closeMedia()
{
    const QVector<KdMp4Box> boxes =
        KdMp4Boxes::between(&m_file, m_layout.header.end(), m_layout.mediaEnd);
    const bool isOpen = !boxes.isEmpty() && boxes.last().isOpenEnded &&
                        boxes.last().size <= std::numeric_limits<quint32>::max();
    return !isOpen ||
           change(boxes.last().offset, KdMp4ByteWriter().u32(quint32(boxes.last().size)).bytes());
}

bool Repair::appendIndex(const QByteArray& index)
{
    // What an earlier attempt left goes, as the new index would be mistaken for its continuation.
    return m_file.resize(m_layout.mediaEnd) && writeAt(m_layout.mediaEnd, index) && sync();
}

// Without space for an index the file can still be made one that many players read as it is.
RepairResult Repair::noSpace()
{
    if (m_layout.state == State::Hidden) {
        writeAt(m_layout.slot, KdTakeLayout::mediaHeader(m_layout.slot, m_layout.header.offset));
        writeAt(m_layout.header.offset + 4, "moov");
        sync();
    }
    return failed(Reason::NoSpace,
                  QStringLiteral("There is not enough space on the disk to complete %1.")
                      .arg(m_file.fileName()));
}

void Repair::undo()
{
    while (!m_changes.isEmpty()) {
        const Change last = m_changes.takeLast();
        writeAt(last.position, last.before);
    }
    m_file.resize(m_layout.mediaEnd);
    sync();
}

RepairResult Repair::checked()
{
    const KdTakeContents contents =
        KdTakeCheck::read(m_file.fileName(), [this] { return goesOn(kHalfWay); });
    if (contents.isReadable && contents.audioFrames + contents.videoFrames == frames(m_movie)) {
        goesOn(100);
        return result(Outcome::Repaired, QStringLiteral("The recording was completed."),
                      m_movie.durationMs());
    }
    undo();
    return contents.problem.isEmpty() && !contents.isReadable
               ? result(Outcome::Cancelled, QStringLiteral("The repair was cancelled."))
               : failed(Reason::Damaged, QStringLiteral("The completed file could not be read: %1")
                                             .arg(contents.problem));
}

} // namespace

RepairResult KdTakeRepair::run(const QString& path, const Progress& progress)
{
    gst_init(nullptr, nullptr);
    return Repair(path, progress).run();
}
