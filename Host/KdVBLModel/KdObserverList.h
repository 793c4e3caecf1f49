#pragma once

#include <KdCore/KdObserverList.h> // where it moved; include it from there
