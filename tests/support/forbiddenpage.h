#pragma once

#include <QtGlobal>

/// A page of memory that may be neither read nor written, for as long as this lives.
class ForbiddenPage
{
public:
    ForbiddenPage();
    ~ForbiddenPage();

    [[nodiscard]] volatile char *address() const { return m_address; }

private:
    Q_DISABLE_COPY_MOVE(ForbiddenPage)

    char *m_address = nullptr;
};
