// SPDX-License-Identifier: Apache-2.0
#include "apps/cli/PlayScript.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <system_error>
#include <utility>

namespace {

using Kind = PlayLine::Kind;

constexpr std::string_view kBlanks = " \t\r";

struct Word {
  std::string text;
  int column = 1;
};

int CountCharacters(std::string_view text) {
  constexpr unsigned kContinuationMask = 0xC0;
  constexpr unsigned kContinuation = 0x80;
  return static_cast<int>(std::count_if(text.begin(), text.end(), [](char byte) {
    return (static_cast<unsigned char>(byte) & kContinuationMask) != kContinuation;
  }));
}

template <typename Value>
struct Choice {
  std::string_view word;
  Value value;
};

constexpr Choice<PlexoTruth> kCompletions[] = {{"completed", PlexoTruth::True()},
                                               {"incomplete", PlexoTruth::False()},
                                               {"unknown", PlexoTruth::Unknown()}};
constexpr Choice<PlexoTruth> kSuccesses[] = {
    {"passed", PlexoTruth::True()}, {"failed", PlexoTruth::False()}, {"unknown", PlexoTruth::Unknown()}};
constexpr Choice<PlexoTruth> kTruths[] = {
    {"true", PlexoTruth::True()}, {"false", PlexoTruth::False()}, {"unknown", PlexoTruth::Unknown()}};

/// One line on its way from words to a PlayLine. Each step returns false after a mistake.
class LineReading {
 public:
  LineReading(const PlexoSequencingDefinition& course, PlayLine& target, PlayMistake& fault)
      : definition(course), line(target), mistake(fault) {}

  bool Read(std::string_view text) {
    if (!Split(text)) return false;
    if (words.empty()) return true;
    line.text = text.substr(start, end - start);
    const Word& first = words[next++];
    const auto* found = std::find_if(std::begin(kStarters), std::end(kStarters),
                                     [&first](const Starter& starter) { return starter.word == first.text; });
    if (found == std::end(kStarters))
      return Fail(first, "'" + first.text + "' isn't understood; allowed: " + ListWords(kStarters));
    line.kind = found->kind;
    line.request.kind = found->navigation;
    if (found->read != nullptr && !(this->*found->read)()) return false;
    return next == words.size() ||
           Fail(words[next], "'" + words[next].text + "' is one word too many; nothing follows here");
  }

  static std::vector<std::string> GetHelp() {
    std::vector<std::string> help;
    for (const Starter& starter : kStarters)
      help.push_back(std::string(starter.word) + (starter.arguments.empty() ? "" : " ") +
                     std::string(starter.arguments));
    return help;
  }

 private:
  struct Starter {
    std::string_view word;
    std::string_view arguments;
    Kind kind;
    bool (LineReading::*read)() = nullptr;
    PlexoNavigation navigation = PlexoNavigation::Start;
  };
  static const Starter kStarters[26];

  bool Fail(int column, std::string message) {
    mistake = {column, std::move(message)};
    return false;
  }
  bool Fail(const Word& word, std::string message) { return Fail(word.column, std::move(message)); }

  bool Split(std::string_view text) {
    std::size_t at = text.find_first_not_of(kBlanks);
    start = std::min(at, text.size());
    while (at < text.size() && text[at] != '#') {
      const int column = CountCharacters(text.substr(0, at)) + 1;
      std::size_t stop = 0;
      if (text[at] == '"') {
        stop = text.find('"', at + 1);
        if (stop == std::string_view::npos) return Fail(column, "the quote doesn't end");
        words.push_back({std::string(text.substr(at + 1, stop - at - 1)), column});
        ++stop;
      } else {
        stop = std::min(text.find_first_of(kBlanks, at), text.size());
        words.push_back({std::string(text.substr(at, stop - at)), column});
      }
      end = stop;
      at = std::min(text.find_first_not_of(kBlanks, stop), text.size());
    }
    endColumn = CountCharacters(text.substr(0, end)) + 1;
    return true;
  }

  template <typename Entries>
  static std::string ListWords(const Entries& entries) {
    std::string list;
    for (const auto& entry : entries) list += (list.empty() ? "" : ", ") + std::string(entry.word);
    return list;
  }

  bool Take(std::string_view what, const Word*& word) {
    if (next == words.size()) return Fail(endColumn, std::string(what) + " is missing");
    word = &words[next++];
    return true;
  }

  template <typename Value, std::size_t count>
  bool TakeChoice(const Choice<Value> (&choices)[count], Value& value) {
    const std::string list = ListWords(choices);
    const Word* word = nullptr;
    if (!Take("one of " + list, word)) return false;
    for (const Choice<Value>& choice : choices) {
      if (choice.word != word->text) continue;
      value = choice.value;
      return true;
    }
    return Fail(*word, "'" + word->text + "' isn't one of " + list);
  }

  bool TakeActivity(PlexoIndex& activity) {
    const Word* word = nullptr;
    return Take("an item's identifier", word) && FindActivity(*word, activity);
  }
  bool FindActivity(const Word& word, PlexoIndex& activity) {
    activity = definition.Find(word.text);
    return activity != kPlexoNone ||
           Fail(word, "the course has no item '" + word.text + "'; 'tree' lists all of them");
  }

  /// A number in a range, or "unknown".
  bool TakeMeasure(double least, double most, PlexoMeasure& measure) {
    const Word* word = nullptr;
    if (!Take("a number, or 'unknown',", word)) return false;
    measure = PlexoMeasure::Unknown();
    if (word->text == "unknown") return true;
    double number = 0;
    const char* stop = word->text.data() + word->text.size();
    const auto [read, error] = std::from_chars(word->text.data(), stop, number);
    if (error != std::errc() || read != stop || !std::isfinite(number))
      return Fail(*word, "'" + word->text + "' isn't a number; expected one such as 0.8, or 'unknown'");
    if (number < least || number > most) {
      return Fail(*word, "'" + word->text + "' is out of range; allowed are " +
                             (least < 0 ? "-1 to 1" : "0 to 1") + ", as the content reports it");
    }
    measure = PlexoMeasure(number);
    return true;
  }

  bool ReadTarget() { return TakeActivity(line.request.target); }
  bool ReadCompletion() { return TakeChoice(kCompletions, line.data.whole.completed.emplace()); }
  bool ReadSuccess() { return TakeChoice(kSuccesses, line.data.whole.satisfied.emplace()); }
  bool ReadScore() { return TakeMeasure(-1, 1, line.data.whole.measure.emplace()); }
  bool ReadProgress() { return TakeMeasure(0, 1, line.data.whole.progress.emplace()); }
  bool ReadSuspend() {
    line.data.isSuspended = true;
    return true;
  }
  bool ReadObjective() {
    PlexoObjectiveData& objective = line.data.objectives.emplace_back();
    const Word* word = nullptr;
    if (!Take("an objective's identifier", word)) return false;
    objective.identifier = word->text;
    if (!TakeChoice(kSuccesses, objective.satisfied.emplace())) return false;
    return next == words.size() || TakeMeasure(-1, 1, objective.measure.emplace());
  }

  bool ReadExpectation() {
    enum class Subject { Deliver, Completed, Satisfied, Attempted, Measure, Can, Cannot };
    static constexpr Choice<Subject> kSubjects[] = {
        {"deliver", Subject::Deliver},     {"completed", Subject::Completed},
        {"satisfied", Subject::Satisfied}, {"attempted", Subject::Attempted},
        {"measure", Subject::Measure},     {"can", Subject::Can},
        {"cannot", Subject::Cannot}};
    Subject subject{};
    if (!TakeChoice(kSubjects, subject)) return false;
    switch (subject) {
      case Subject::Deliver:
        return ReadDelivery();
      case Subject::Completed:
        return ReadStatus(PlayLine::Status::Completed);
      case Subject::Satisfied:
        return ReadStatus(PlayLine::Status::Satisfied);
      case Subject::Attempted:
        return ReadStatus(PlayLine::Status::Attempted);
      case Subject::Measure:
        line.kind = Kind::ExpectMeasure;
        return TakeActivity(line.activity) && TakeMeasure(-1, 1, line.measure);
      case Subject::Can:
      case Subject::Cannot:
        return ReadProspect(subject == Subject::Can);
    }
    return false;
  }

  bool ReadDelivery() {
    const Word* word = nullptr;
    if (!Take("an item's identifier, 'end' or 'none'", word)) return false;
    if (word->text == "end") line.delivery = PlayLine::Delivery::End;
    if (word->text == "none") line.delivery = PlayLine::Delivery::None;
    return line.delivery != PlayLine::Delivery::Content || FindActivity(*word, line.activity);
  }

  bool ReadStatus(PlayLine::Status status) {
    line.kind = Kind::ExpectStatus;
    line.status = status;
    return TakeActivity(line.activity) && TakeChoice(kTruths, line.truth);
  }

  bool ReadProspect(bool isOpen) {
    static constexpr Choice<PlexoNavigation> kProspects[] = {{"continue", PlexoNavigation::Continue},
                                                             {"previous", PlexoNavigation::Previous},
                                                             {"choice", PlexoNavigation::Choice}};
    line.kind = Kind::ExpectProspect;
    line.isOpen = isOpen;
    if (!TakeChoice(kProspects, line.request.kind)) return false;
    return line.request.kind != PlexoNavigation::Choice || TakeActivity(line.request.target);
  }

  bool ReadWhy() {
    const Word* word = nullptr;
    if (!Take("an item's identifier, 'continue' or 'previous'", word)) return false;
    line.request.kind = PlexoNavigation::Choice;
    line.request.target = definition.Find(word->text);
    if (line.request.target != kPlexoNone) return true;
    if (word->text != "continue" && word->text != "previous") return FindActivity(*word, line.request.target);
    line.request.kind = word->text == "continue" ? PlexoNavigation::Continue : PlexoNavigation::Previous;
    return true;
  }

  bool ReadFile() {
    const Word* word = nullptr;
    if (!Take("a file", word)) return false;
    if (word->text.empty()) return Fail(*word, "the file's name is empty");
    line.file = word->text;
    return true;
  }

  const PlexoSequencingDefinition& definition;
  PlayLine& line;
  PlayMistake& mistake;
  std::vector<Word> words;
  std::size_t next = 0;
  std::size_t start = 0;
  std::size_t end = 0;
  int endColumn = 1;
};

const LineReading::Starter LineReading::kStarters[] = {
    {"start", "", Kind::Request, nullptr, PlexoNavigation::Start},
    {"continue", "", Kind::Request, nullptr, PlexoNavigation::Continue},
    {"previous", "", Kind::Request, nullptr, PlexoNavigation::Previous},
    {"choice", "ID", Kind::Request, &LineReading::ReadTarget, PlexoNavigation::Choice},
    {"jump", "ID", Kind::Request, &LineReading::ReadTarget, PlexoNavigation::Jump},
    {"exit", "", Kind::Request, nullptr, PlexoNavigation::Exit},
    {"exitall", "", Kind::Request, nullptr, PlexoNavigation::ExitAll},
    {"abandon", "", Kind::Request, nullptr, PlexoNavigation::Abandon},
    {"abandonall", "", Kind::Request, nullptr, PlexoNavigation::AbandonAll},
    {"suspendall", "", Kind::Request, nullptr, PlexoNavigation::SuspendAll},
    {"resumeall", "", Kind::Request, nullptr, PlexoNavigation::ResumeAll},
    {"status", "completed|incomplete|unknown", Kind::Report, &LineReading::ReadCompletion},
    {"success", "passed|failed|unknown", Kind::Report, &LineReading::ReadSuccess},
    {"score", "NUMBER|unknown", Kind::Report, &LineReading::ReadScore},
    {"progress", "NUMBER|unknown", Kind::Report, &LineReading::ReadProgress},
    {"objective", "ID passed|failed|unknown [SCORE]", Kind::Report, &LineReading::ReadObjective},
    {"suspend", "", Kind::Report, &LineReading::ReadSuspend},
    {"expect",
     "deliver ID|end|none, completed|satisfied|attempted ID true|false|unknown, measure ID NUMBER|unknown, "
     "can|cannot continue|previous|choice ID",
     Kind::ExpectDelivery, &LineReading::ReadExpectation},
    {"toc", "", Kind::Contents},
    {"tree", "", Kind::Tree},
    {"globals", "", Kind::Globals},
    {"why", "ID|continue|previous", Kind::Why, &LineReading::ReadWhy},
    {"save", "FILE", Kind::Save, &LineReading::ReadFile},
    {"load", "FILE", Kind::Load, &LineReading::ReadFile},
    {"help", "", Kind::Help},
    {"quit", "", Kind::Quit},
};

}  // namespace

std::optional<PlayLine> PlayScript::Parse(std::string_view text, int number, PlayMistake& mistake) const {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (number == 1 && text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  PlayLine line;
  line.number = number;
  if (!LineReading(definition, line, mistake).Read(text)) return std::nullopt;
  return line;
}

std::vector<std::string> PlayScript::GetHelp() { return LineReading::GetHelp(); }
