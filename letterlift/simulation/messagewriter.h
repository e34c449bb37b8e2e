#pragma once

#include <QByteArray>

struct MailMessage;

/// \a message as an RFC 5322 message with CRLF line ends. A draft carries "X-Unsent: 1". A text alone, without
/// attachments, that has no line end at its end gets one. Main thread: the first call initialises the MIME library.
[[nodiscard]] QByteArray writeMessage(const MailMessage &message);
