#pragma once

#include <QString>

/// Writes \a line to the protocol's channel "error", which an automatic test opens where there is nobody to close a
/// box. False, and nothing is written, if there is no such channel. Any thread, while the channel isn't being closed.
/// It is declared here, where everything can reach it, and defined in protocol/.
[[nodiscard]] bool s3WriteToErrorChannel(const QString &line);
