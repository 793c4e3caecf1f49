#pragma once

#include <QByteArray>
#include <QString>

/** Reading what PipeWire's "pw-dump" prints. Pure functions. */
namespace StudioPipeWire {

/** @return whether there is a source of sound that is no monitor of an output. */
bool hasMicrophone(const QByteArray& dump);

/** @return whether there is a source of pictures. */
bool hasCamera(const QByteArray& dump);

/** @return whether there is a node of that name. */
bool hasNode(const QByteArray& dump, const QString& nodeName);

} // namespace StudioPipeWire
