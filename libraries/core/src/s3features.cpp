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
