#pragma once

#include "s3singleton.h"

#include <QMultiMap>
#include <QString>

/// Names of features, exact to the case. Only the presence of a key counts, whatever its value. Filled near the start
/// of the process by the main thread, and only read after that, by any thread and without a lock.
class s3Features : public QMultiMap<QString, bool>
{
};

/// Features that are switched off.
class s3DisabledFeatures : public s3Features, public s3Singleton<s3DisabledFeatures>
{
public:
    /// Never null. Made on the first call, at the latest by a static initialiser of the core.
    [[nodiscard]] static s3DisabledFeatures *instance();

private:
    s3DisabledFeatures() = default;
};

/// Features that are switched on ahead of their release.
class s3ExperimentalFeatures : public s3Features, public s3Singleton<s3ExperimentalFeatures>
{
public:
    /// Never null. Made on the first call, at the latest by a static initialiser of the core.
    [[nodiscard]] static s3ExperimentalFeatures *instance();

private:
    s3ExperimentalFeatures() = default;
};
