#include "s3features.h"

s3DisabledFeatures *s3DisabledFeatures::instance()
{
    static s3DisabledFeatures *features = nullptr;
    if (features == nullptr)
        features = new s3DisabledFeatures;
    return features;
}

s3ExperimentalFeatures *s3ExperimentalFeatures::instance()
{
    static s3ExperimentalFeatures *features = nullptr;
    if (features == nullptr)
        features = new s3ExperimentalFeatures;
    return features;
}

namespace {

// Made before there is a second thread: the creation has no lock.
[[maybe_unused]] const s3DisabledFeatures *const disabledBeforeMain = s3DisabledFeatures::instance();
[[maybe_unused]] const s3ExperimentalFeatures *const experimentalBeforeMain = s3ExperimentalFeatures::instance();

} // namespace
