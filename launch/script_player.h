#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "launch/key_events.h"
#include "launch/key_script.h"

namespace tallowmere {

/// What would receive the next key.
enum class KeyTarget {
  elsewhere,  ///< some other window, or none
  window,     ///< the activated window itself, where a key may change a document
  menu,       ///< a menu of the activated window
  dialog,     ///< a window over the activated one
  text_field  ///< the same, with the caret in a field for text
};

/// Whether a window has come to the front.
enum class Activation {
  waiting,
  done,
  refused  ///< its program runs with higher rights: the system drops keys that are sent to it
};

/// Other programs' windows and the keyboard, as a script needs them.
class KeyStage {
 public:
  virtual ~KeyStage() = default;

  /// Looks for the window once, makes it the activated one and brings it to the front. Done when it
  /// is there and takes keys.
  virtual Activation try_activate(std::string_view title) = 0;
  /// Returns what would receive the next key; asked right before each key.
  virtual KeyTarget target() = 0;
  /// True when the user holds no Shift, Ctrl, Alt or Windows key, which would join those sent.
  virtual bool keyboard_free() = 0;
  virtual void press(const KeyEvent& event) = 0;
  /// True when the activated window has answered since the last key.
  virtual bool keys_processed() = 0;

  virtual double seconds() const = 0;  ///< of a clock that never goes back
  /// Serves events for a moment; false when the script is to end.
  virtual bool pause() = 0;
};

enum class ScriptEnd {
  done,
  no_window,
  higher_rights,
  keys_held,
  lost_window,
  no_answer,
  no_dialog,
  interrupted
};

/// Plays a script: waits serve events, and keys go only to the activated window and those over it.
/// Text and Enter go only to menus and dialogs, never to the window itself, where they would change
/// the user's document. The text to find goes only to a text field, because a message over the
/// window would take letters for its buttons.
class ScriptPlayer {
 public:
  explicit ScriptPlayer(KeyStage& stage) : stage_(stage) {}

  ScriptEnd play(const std::vector<ScriptStep>& steps);

  /// Returns the title of the last window that the script wanted.
  const std::string& title() const { return title_; }

 private:
  ScriptEnd play_step(const ScriptStep& step);
  ScriptEnd activate(const std::string& title);
  ScriptEnd send(const std::string& keys, bool text_to_find);
  ScriptEnd wait_for_target(const KeyEvent& event, bool text_to_find);
  ScriptEnd settle(ScriptEnd otherwise);
  ScriptEnd wait_seconds(double seconds);
  ScriptEnd wait_until(const std::function<bool()>& ready, double seconds, ScriptEnd otherwise);

  KeyStage& stage_;
  std::string title_;
  bool settling_ = false;  ///< the last key may yet open or close a menu or a dialog
};

/// Returns what the status bar says about a script's end; empty when there is nothing to say.
std::string script_status(ScriptEnd end, std::string_view title);

}  // namespace tallowmere
