// A screen of the tests' own: Xvfb on a display number it picks itself, with
// a window manager (openbox), started before the Qt application of this
// program so that its windows are real X windows — dialogs that stack, take
// the focus and time out as on a desktop. The user's settings are the test's
// own (HOME, XDG_CONFIG_HOME) and the language French.
#pragma once

#include <string>

namespace essai_bureau {

// Starts them once (later calls return the first answer): "" when the screen
// is up, otherwise why not (Xvfb or openbox missing: the test is skipped).
const std::string& Ecran();

}  // namespace essai_bureau
