#pragma once

#include <QByteArray>

struct MailMessage;

/// \a message as an RFC 5322 message with CRLF line ends. A draft carries "X-Unsent: 1".
/// Main thread: the first call initialises the MIME library.
[[nodiscard]] QByteArray writeMessage(const MailMessage &message);
