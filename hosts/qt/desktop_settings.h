// What the settings service of the desktop says that the toolkit does not know: asked over the
// session bus, where there is one.
#pragma once

#include <QObject>
#include <functional>

#include "hosts/qt/desktop_look.h"

namespace orvello {

// At once, and only of a service that runs already: a start waits for nothing.
DesktopSettings ask_desktop_settings();

// Later, from the message loop, of a service that may have to be started first; not at all where
// there is none, or when `context` is gone by then.
void ask_desktop_settings_later(QObject* context, std::function<void(DesktopSettings)> answer);

}  // namespace orvello
