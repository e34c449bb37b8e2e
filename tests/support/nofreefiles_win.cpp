#include "nofreefiles.h"

NoFreeFiles::NoFreeFiles() = default;

NoFreeFiles::~NoFreeFiles() = default;
