#pragma once

#include <KdVBLModel/KdCaptureDevice.h>

#include <QList>
#include <QVector>

/** @return the devices as the contract hands them out: an index is the position in the list. */
QList<KdVBLMODEL::_KdCaptureDevInf> kdInfosOf(const QVector<KdCaptureDevice>& devices);
