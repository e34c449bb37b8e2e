#pragma once

#include "defect.h"
#include "dictionary.h"

/// What is wrong with the texts as such, in catalogues that could be read. \a folder names the catalogues.
void checkTexts(const Dictionary &dictionary, const QString &folder, Defects &defects);
