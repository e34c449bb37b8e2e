#include "unprivileged.h"

Unprivileged::Unprivileged() = default;

Unprivileged::~Unprivileged() = default;

bool Unprivileged::isPossible()
{
    return false;
}
