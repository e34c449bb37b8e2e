#pragma once

#include "dictionarybuilder.h"
#include "s3guidictionary.h"
#include "testfile.h"

#include <QTemporaryDir>

#include <memory>

/// A folder for the two files of a dictionary of the GUI.
class GuiDictionaryFiles
{
public:
    [[nodiscard]] bool isValid() const { return m_folder.isValid(); }
    [[nodiscard]] QString mainPath() const { return m_folder.filePath(QStringLiteral("main")); }
    [[nodiscard]] QString fallbackPath() const { return m_folder.filePath(QStringLiteral("fallback")); }

    /// Writes the main file and opens it, with the fallback that is there.
    [[nodiscard]] std::unique_ptr<s3GuiDictionary> opened(const DictionaryBuilder &main) const
    {
        writeTestFile(mainPath(), main.build());
        auto dictionary = std::make_unique<s3GuiDictionary>(mainPath(), fallbackPath());
        if (!dictionary->openQuietly())
            qFatal("The dictionary can't be opened");
        return dictionary;
    }

    /// Writes both files and opens them.
    [[nodiscard]] std::unique_ptr<s3GuiDictionary> opened(const DictionaryBuilder &main,
                                                          const DictionaryBuilder &fallback) const
    {
        writeTestFile(fallbackPath(), fallback.build());
        return opened(main);
    }

private:
    QTemporaryDir m_folder;
};
