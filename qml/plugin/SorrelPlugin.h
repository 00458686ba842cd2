// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELQML_SORRELPLUGIN_H
#define SORRELQML_SORRELPLUGIN_H

#include <QQmlExtensionPlugin>

namespace SorrelQml {

/// Registers the types of the module, and makes an IconProvider for each engine.
class SorrelPlugin : public QQmlExtensionPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QQmlExtensionInterface_iid)

public:
    void registerTypes(const char *uri) override;
    void initializeEngine(QQmlEngine *engine, const char *uri) override;
};

} // namespace SorrelQml

#endif
