#include "KdTakeWriter.h"

#include "KdTakeOutput.h"
#include "KdTakeSound.h"

#include <KdCore/KdBaseLog.h>

class KdTakeWriter::Private
{
public:
    bool open(const QString& path, const KdVBLMODEL::KdAudioFormat& asked, bool takeAgain,
              QString* error);

    KdTakeOutput output;
    KdTakeSound sound;
};

bool KdTakeWriter::Private::open(const QString& path, const KdVBLMODEL::KdAudioFormat& asked,
                                 bool takeAgain, QString* error)
{
    if (!sound.open(asked, error)) {
        return false;
    }
    KdTakeRecord record;
    record.takePath = path;
    record.kind = KdTakeRecord::Kind::Audio;
    record.format = sound.text();
    if (!output.claim(record, takeAgain, error)) {
        return false;
    }
    return output.start(sound.createTracks(error), error);
}

KdTakeWriter::KdTakeWriter() : d(std::make_unique<Private>()) {}

KdTakeWriter::~KdTakeWriter()
{
    finish();
}

bool KdTakeWriter::open(const QString& path, const KdVBLMODEL::KdAudioFormat& format,
                        bool takeAgain, QString* error)
{
    QString problem;
    if (d->sound.caps()) {
        problem = QStringLiteral("The writer was used before.");
    } else if (d->open(path, format, takeAgain, &problem)) {
        return true;
    }
    KdBaseLog::write(KdBaseLog::Error, {"Host/KdVBLModel/KdTakeWriter", "KdTakeWriter::open"}, "%s",
                     qUtf8Printable(problem));
    if (error) {
        *error = problem;
    }
    return false;
}

GstCaps* KdTakeWriter::inputCaps() const
{
    return d->sound.caps();
}

int KdTakeWriter::samplerate() const
{
    return d->sound.format().samplerate;
}

int KdTakeWriter::channels() const
{
    return d->sound.format().channels;
}

bool KdTakeWriter::push(GstBuffer* buffer)
{
    if (!buffer) {
        return false;
    }
    if (!d->output.isOpen() || d->output.hasFailed()) {
        gst_buffer_unref(buffer);
        return false;
    }
    GstBuffer* const own = gst_buffer_make_writable(buffer);
    d->sound.stamp(own);
    return d->output.push(0, own);
}

qint64 KdTakeWriter::framesPushed() const
{
    return d->sound.frames();
}

bool KdTakeWriter::hasFailed() const
{
    return d->output.hasFailed();
}

QString KdTakeWriter::error() const
{
    return d->output.error();
}

KdTakeWriter::Result KdTakeWriter::finish()
{
    KdGstBufferPtr tail = framesPushed() > 0 ? d->sound.tail() : nullptr;
    if (tail) {
        d->output.push(0, tail.release());
    }
    return d->output.finish(framesPushed() > 0);
}
