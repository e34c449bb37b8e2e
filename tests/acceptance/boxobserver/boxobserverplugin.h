#pragma once

#include <QGenericPlugin>

/// Puts a BoxObserver into the program that loads it: QT_QPA_GENERIC_PLUGINS=boxobserver, with QT_PLUGIN_PATH naming
/// the folder above the plugin's. A plugin, so that the program under test is the very one that is shipped.
class BoxObserverPlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "boxobserver.json")

public:
    /// Null for another \a key than "boxobserver".
    [[nodiscard]] QObject *create(const QString &key, const QString &parameters) override;
};
