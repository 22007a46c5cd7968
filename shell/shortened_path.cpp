#include "shell/shortened_path.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "engine/unicode.h"

namespace tallowmere {
namespace {

constexpr std::string_view separators = "\\/";
constexpr std::string_view dots = "…";

/// The length of the drive, or of the server with its share, with the separator.
std::size_t root_length(std::string_view path) {
  const bool server = path.find_first_not_of(separators) == 2;
  const std::size_t host_end = server ? path.find_first_of(separators, 2) : 0;
  const std::size_t end = path.find_first_of(separators, server ? host_end + 1 : 0);
  return end == path.npos ? 0 : end + 1;
}

/// Where the names after the root begin.
std::vector<std::size_t> name_starts(std::string_view path, std::size_t root) {
  std::vector<std::size_t> starts;
  for (std::size_t at = root; at < path.size();) {
    starts.push_back(at);
    at = std::min(path.find_first_of(separators, at), path.size() - 1) + 1;
  }
  return starts;
}

/// Where the characters from here on begin.
std::vector<std::size_t> character_starts(std::string_view path, std::size_t from) {
  std::vector<std::size_t> starts;
  while (from < path.size()) {
    starts.push_back(from);
    next_code_point(path, from);
  }
  return starts;
}

/// `begin` and the path from the first of these places on from which it fits.
template <typename Fits>
std::optional<std::string> longest(const std::string& begin, std::string_view path,
                                   const std::vector<std::size_t>& places, const Fits& fits) {
  const auto with_rest = [&](std::size_t at) { return begin + std::string(path.substr(at)); };
  const auto found =
      std::ranges::partition_point(places, [&](std::size_t at) { return !fits(with_rest(at)); });
  if (found == places.end()) return std::nullopt;
  return with_rest(*found);
}

}  // namespace

std::string shortened_path(const std::string& path,
                           const std::function<bool(const std::string&)>& fits) {
  const std::size_t root = root_length(path);
  std::vector<std::size_t> names = name_starts(path, root);
  if (root == 0 || names.empty() || fits(path)) return path;
  const std::size_t last_name = names.back();
  names.erase(names.begin());
  const std::string begin = path.substr(0, root) + std::string(dots) + path[root - 1];
  if (auto text = longest(begin, path, names, fits)) return *text;
  // From the separator before the last name on.
  const std::vector<std::size_t> characters = character_starts(path, last_name - 1);
  return longest(std::string(dots), path, characters, fits).value_or(std::string(dots));
}

}  // namespace tallowmere
