#include "engine/file_tester.h"

#include <utility>

namespace tallowmere {

namespace {

std::vector<std::string> checked_patterns(const SearchCriteria& search) {
  std::vector<std::string> patterns;
  for (std::size_t slot = 0; slot < search.user_types.size(); ++slot) {
    if (search.type_checked[slot]) patterns.push_back(search.user_types[slot]);
  }
  return patterns;
}

}  // namespace

SearchJob::SearchJob(const SearchCriteria& search, const CodePage& page,
                     const FileSystem& the_files, const Clock& clock, bool facts_wanted)
    : files(the_files),
      compiled(search, page),
      unicode(search.unicode_text ? std::make_unique<UnicodeSearch>(search, page) : nullptr),
      dates(search, clock),
      patterns(checked_patterns(search)),
      leave_out(search.leave_out),
      subfolders(search.search_subfolders),
      hidden_files(search.hidden_files),
      online_files(search.online_files),
      wants_facts(facts_wanted) {}

FileTester::FileTester(const SearchJob& job)
    : job_(job), file_(job.files.reader()), matcher_(job.compiled, job.unicode.get()) {}

void FileTester::list(SearchFolder& folder, const std::function<bool()>& go_on) {
  folder.listing.clear();
  folder.listing.set_wants_hidden(job_.hidden_files);
  folder.error = job_.files.list_folder(folder.path(), folder.listing, go_on);
  if (job_.subfolders) folder.subfolders = sorted_subfolders(folder.listing);
  if (!job_.leave_out.empty()) leave_out(folder);
  folder.plan(job_.patterns);
}

/// Removes what is left out by name and counts it; folders count only when subfolders are searched.
void FileTester::leave_out(SearchFolder& folder) const {
  const auto unwanted = [this](std::string_view name) { return job_.leave_out.fit(name); };
  folder.left_out.names = static_cast<std::int64_t>(folder.listing.remove_files(unwanted) +
                                                    std::erase_if(folder.subfolders, unwanted));
}

/// Opens a file to be read, unless reading would fetch it from elsewhere unasked. Where the listing
/// does not say, the open file is asked: opening it fetches nothing, and asking by name would go to
/// the disk twice.
std::optional<SystemError> FileTester::open(const SearchFolder& folder,
                                            const FolderListing::File& file) {
  const SystemError elsewhere{0, "not on this computer"};
  if (!job_.online_files && file.online_only) return elsewhere;
  const bool listed = folder.source() == SearchFolder::Source::folder;
  auto failure =
      listed ? file_->open_listed(folder.path(), file.name) : file_->open(folder.path(), file.name);
  if (failure || file.facts_known || job_.online_files || !file_->online_only()) return failure;
  file_->close();
  return elsewhere;
}

Verdict FileTester::test(SearchFolder& folder, std::size_t row, const std::function<bool()>& go_on,
                         SystemError& error) {
  using Source = SearchFolder::Source;
  const FolderListing::File as_listed = folder.listing.file(row);
  FolderListing::File file = as_listed;
  const auto failed = [&error](std::optional<SystemError> failure) {
    if (failure) error = std::move(*failure);
    return failure.has_value();
  };
  const auto ask_facts = [&] {
    auto failure = job_.files.facts(folder.path(), file.name, file.facts);
    file.facts_known = !failure;
    if (!failure) folder.listing.set_facts(row, file.facts);
    return failure;
  };
  if (job_.dates.limits() && folder.source() != Source::selection) {
    if (!file.facts_known && failed(ask_facts())) return Verdict::unread;
    if (!job_.dates.file_in_date_range(file.facts.modified)) return Verdict::other_date;
  }
  if (failed(open(folder, as_listed))) return Verdict::unread;
  switch (matcher_.match_open_file(*file_, go_on, error)) {
    case MatchOutcome::match:
      if (folder.source() == Source::folder && job_.wants_facts && !file.facts_known) ask_facts();
      return matcher_.another_as_unicode() ? Verdict::match_in_bytes : Verdict::match;
    case MatchOutcome::no_match:
      return matcher_.another_as_unicode() ? Verdict::no_match_in_bytes : Verdict::no_match;
    case MatchOutcome::failed:
      return Verdict::broken_off;
    case MatchOutcome::stopped:
      break;
  }
  return Verdict::untested;
}

}  // namespace tallowmere
