// SPDX-License-Identifier: LGPL-2.1-or-later
#include "plugin/SorrelPlugin.h"

#include "icons/IconProvider.h"
#include "package/PackageInfo.h"
#include "rows/EarlyRows.h"
#include "rows/ShelfModel.h"

#include <QtQml>

namespace SorrelQml {

namespace {

constexpr int ModuleMajor = 0;
constexpr int ModuleMinor = 5;

} // namespace

void SorrelPlugin::registerTypes(const char *uri)
{
    EarlyRows::start();
    qmlRegisterType<PackageInfo>(uri, ModuleMajor, ModuleMinor, "PackageInfo");
    qmlRegisterType<ShelfModel>(uri, ModuleMajor, ModuleMinor, "ShelfModel");
}

void SorrelPlugin::initializeEngine(QQmlEngine *engine, const char *)
{
    IconProvider::addTo(engine);
}

} // namespace SorrelQml
