#pragma once

#include "automationobject.h"

#include <memory>

class ComApartment;
class QAxObject;

/// An AutomationObject on ActiveQt's QAxObject, whose operations it hands on one to one. What the server says to one
/// QAxObject warns of, in its own words; what keeps an operation from being tried at all is warned of here. Since
/// QAxObject doesn't tell how a call has ended, CallPatience hears of rejection and silence from the message filter.
class ActiveQtObject : public AutomationObject
{
    Q_OBJECT

public:
    /// Takes \a object over, which is null for an object with no server behind it.
    ActiveQtObject(std::shared_ptr<ComApartment> apartment, std::unique_ptr<QAxObject> object, QObject *parent);
    ~ActiveQtObject() override;

    [[nodiscard]] bool isNull() const override;
    [[nodiscard]] AutomationObject *querySubObject(const char *name, const QVariantList &arguments = {}) override;
    QVariant dynamicCall(const char *name, const QVariantList &arguments = {}) override;
    [[nodiscard]] QVariant property(const char *name) override;
    bool setProperty(const char *name, const QVariant &value) override;
    [[nodiscard]] QVariant asVariant() const override;
    void disableMetaObject() override;

protected:
    void connectNotify(const QMetaMethod &signal) override;

private:
    /// QObject would take the name of a property that isn't there for one of its own making, and say nothing.
    [[nodiscard]] bool hasProperty(const char *name, bool toWrite) const;

    std::shared_ptr<ComApartment> m_apartment; // in front of m_object, which has to go first
    std::unique_ptr<QAxObject> m_object;
};
