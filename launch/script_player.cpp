#include "launch/script_player.h"

namespace tallowmere {
namespace {

constexpr double window_limit = 10;  // seconds for a window to come to the front
constexpr double keys_limit = 10;    // for the user to let go of Shift, Ctrl and Alt
constexpr double target_limit = 2;   // for a menu or a dialog to open
constexpr double answer_limit = 5;   // for the editor to process what was sent
constexpr int keys_at_once = 50;     // without serving events

bool may_reach(KeyTarget target, const KeyEvent& event, bool text_to_find) {
  switch (target) {
    case KeyTarget::elsewhere:
      return false;
    case KeyTarget::window:
      return !text_to_find && !event.writes();
    case KeyTarget::menu:
    case KeyTarget::dialog:
      return !text_to_find;
    case KeyTarget::text_field:
      break;
  }
  return true;
}

}  // namespace

ScriptEnd ScriptPlayer::play(const std::vector<ScriptStep>& steps) {
  title_.clear();
  settling_ = false;
  for (const ScriptStep& step : steps) {
    const ScriptEnd end = play_step(step);
    if (end != ScriptEnd::done) return end;
  }
  return ScriptEnd::done;
}

ScriptEnd ScriptPlayer::play_step(const ScriptStep& step) {
  switch (step.kind) {
    case ScriptStep::Kind::activate:
      return activate(step.text);
    case ScriptStep::Kind::wait:
      return wait_seconds(step.seconds);
    case ScriptStep::Kind::send:
      return send(step.text, false);
    case ScriptStep::Kind::send_text:
      return send(step.text, true);
    case ScriptStep::Kind::send_wait:
      break;
  }
  const ScriptEnd end = send(step.text, false);
  // An editor that searches longer keeps the following keys in its queue.
  return end == ScriptEnd::done ? settle(ScriptEnd::done) : end;
}

/// Activates the window with this title. One that was activated before and is no longer in front
/// is not brought back: the user went elsewhere.
ScriptEnd ScriptPlayer::activate(const std::string& title) {
  const bool again = title == title_;
  title_ = title;
  if (again) {
    return wait_until([this] { return stage_.target() != KeyTarget::elsewhere; }, target_limit,
                      ScriptEnd::lost_window);
  }
  Activation activation = Activation::waiting;
  const auto decided = [&] {
    activation = stage_.try_activate(title);
    return activation != Activation::waiting;
  };
  const ScriptEnd end = wait_until(decided, window_limit, ScriptEnd::no_window);
  return activation == Activation::refused ? ScriptEnd::higher_rights : end;
}

ScriptEnd ScriptPlayer::send(const std::string& keys, bool text_to_find) {
  int sent = 0;
  for (const KeyEvent& event : parse_keys(keys)) {
    ScriptEnd end =
        wait_until([this] { return stage_.keyboard_free(); }, keys_limit, ScriptEnd::keys_held);
    if (end == ScriptEnd::done && settling_ && event.writes()) end = settle(ScriptEnd::no_answer);
    if (end == ScriptEnd::done) end = wait_for_target(event, text_to_find);
    if (end != ScriptEnd::done) return end;
    stage_.press(event);
    settling_ = event.key != NamedKey::none || !event.writes();
    if (++sent % keys_at_once == 0 && !stage_.pause()) return ScriptEnd::interrupted;
  }
  return ScriptEnd::done;
}

ScriptEnd ScriptPlayer::settle(ScriptEnd otherwise) {
  settling_ = false;
  return wait_until([this] { return stage_.keys_processed(); }, answer_limit, otherwise);
}

ScriptEnd ScriptPlayer::wait_for_target(const KeyEvent& event, bool text_to_find) {
  KeyTarget target = KeyTarget::elsewhere;
  const ScriptEnd end = wait_until(
      [&] {
        target = stage_.target();
        return may_reach(target, event, text_to_find);
      },
      target_limit, ScriptEnd::no_dialog);
  const bool lost = end == ScriptEnd::no_dialog && target == KeyTarget::elsewhere;
  return lost ? ScriptEnd::lost_window : end;
}

ScriptEnd ScriptPlayer::wait_seconds(double seconds) {
  return wait_until([] { return false; }, seconds, ScriptEnd::done);
}

/// Waits until `ready` is true; returns `otherwise` when the time is over.
ScriptEnd ScriptPlayer::wait_until(const std::function<bool()>& ready, double seconds,
                                   ScriptEnd otherwise) {
  const double end = stage_.seconds() + seconds;
  while (!ready()) {
    if (stage_.seconds() >= end) return otherwise;
    if (!stage_.pause()) return ScriptEnd::interrupted;
  }
  return ScriptEnd::done;
}

std::string script_status(ScriptEnd end, std::string_view title) {
  const std::string name = "\"" + std::string(title) + "\"";
  switch (end) {
    case ScriptEnd::no_window:
      return "Find On Launch stopped: no window " + name + " came to the front.";
    case ScriptEnd::higher_rights:
      return "Find On Launch stopped: " + name + " runs with higher rights.";
    case ScriptEnd::keys_held:
      return "Find On Launch stopped: a key is held down.";
    case ScriptEnd::lost_window:
      return "Find On Launch stopped: " + name + " is no longer in front.";
    case ScriptEnd::no_answer:
      return "Find On Launch stopped: " + name + " does not answer.";
    case ScriptEnd::no_dialog:
      return "Find On Launch stopped: " + name + " has not opened its Find dialog.";
    case ScriptEnd::done:
    case ScriptEnd::interrupted:
      break;
  }
  return {};
}

}  // namespace tallowmere
