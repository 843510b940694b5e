// zelvaine-cli: the rules engine for scripts. Every answer is one JSON object on stdout;
// a problem with the arguments or the position is one line on stderr and exit status 2.

#include "engine/auto_complete.hpp"
#include "engine/hints.hpp"
#include "engine/json_writer.hpp"
#include "engine/move_rules.hpp"
#include "engine/state_json.hpp"
#include "solver/memory_release.hpp"
#include "solver/solver.hpp"
#include "solver/survey.hpp"
#include "store/game_document.hpp"
#include "store/saved_game.hpp"
#include "tools/cli/board_text.hpp"
#include "tools/cli/move_text.hpp"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <span>
#include <sstream>
#include <string>
#include <string_view>

#include <sys/resource.h>
#include <time.h>

namespace zelvaine::cli {
namespace {

constexpr std::string_view usage =
    "usage: zelvaine-cli deal\n"
    "       zelvaine-cli move STATE SOURCE DESTINATION\n"
    "       zelvaine-cli hint STATE\n"
    "       zelvaine-cli destination STATE SOURCE\n"
    "       zelvaine-cli finish STATE\n"
    "       zelvaine-cli show STATE\n"
    "       zelvaine-cli open FILE\n"
    "       zelvaine-cli export CURRENT INITIAL\n"
    "       zelvaine-cli restore BLOBFILE\n"
    "       zelvaine-cli solve STATE [--budget N] [--exact]\n"
    "       zelvaine-cli survey --deals N --seed S [--budget N] [--exact]\n"
    "STATE is a position file, or - for standard input.\n"
    "SOURCE: tableau:C:I, hand:I or foundation:I; DESTINATION: tableau:C, foundation:F, hand or hand:S.\n"
    "solve prints the verdict (winnable, unwinnable or unknown when the budget of N positions runs\n"
    "out, 2000000 by default, within 64 MB) and, when winnable, the moves as \"SOURCE>DESTINATION\"\n"
    "texts that replay through move from STATE, for example \"tableau:3:9>foundation:0\".\n"
    "--exact searches up to 80000000 positions within 1 GB and one minute, for a verdict on nearly\n"
    "every deal.\n"
    "survey solves N deals shuffled from seed S; its win rate and 95% Wilson interval count only\n"
    "the deals with a verdict, times are milliseconds of processor time.\n";

struct UsageError {
    std::string message;
};

std::string readAll(std::string_view path)
{
    std::ostringstream text;
    if (path == "-") {
        text << std::cin.rdbuf();
        return text.str();
    }
    std::ifstream file{std::string(path), std::ios::binary};
    if (!file) throw UsageError{"cannot read position file \"" + std::string(path) + "\""};
    text << file.rdbuf();
    return text.str();
}

GameState loadState(std::string_view path)
{
    auto state = gameStateFromJson(readAll(path));
    if (!state) throw UsageError{"unreadable position: " + state.error().describe()};
    return std::move(*state);
}

MoveSource sourceArgument(std::string_view text)
{
    if (auto source = parseMoveSource(text)) return *source;
    throw UsageError{"bad source \"" + std::string(text) + "\" (expected tableau:C:I, hand:I or foundation:I)"};
}

MoveDestination destinationArgument(std::string_view text)
{
    if (auto destination = parseMoveDestination(text)) return *destination;
    throw UsageError{"bad destination \"" + std::string(text) + "\" (expected tableau:C, foundation:F, hand or hand:S)"};
}

void expectArguments(std::span<const std::string_view> args, std::size_t count)
{
    if (args.size() != count) {
        throw UsageError{"'" + std::string(args[0]) + "' takes " + std::to_string(count - 1) + " argument" +
                         (count == 2 ? "" : "s")};
    }
}

std::string moveCommand(std::span<const std::string_view> args)
{
    expectArguments(args, 4);
    const GameState state = loadState(args[1]);
    const MoveOutcome outcome = applyMove(state, sourceArgument(args[2]), destinationArgument(args[3]));
    std::string out;
    if (const auto* moved = std::get_if<MoveMoved>(&outcome)) {
        out = "{\"outcome\":\"moved\",\"counted\":";
        out += moved->counted ? "true" : "false";
        out += ",\"fromFoundation\":";
        out += moved->fromFoundation ? "true" : "false";
        out += ",\"state\":";
        appendJson(out, moved->state);
        out += '}';
    } else if (const auto* refused = std::get_if<MoveRefused>(&outcome)) {
        out = "{\"outcome\":\"refused\",\"reason\":";
        appendJsonString(out, refused->reason);
        out += '}';
    } else {
        out = "{\"outcome\":\"ignored\"}";
    }
    return out;
}

std::string hintCommand(std::span<const std::string_view> args)
{
    expectArguments(args, 2);
    const Hint hint = findHint(loadState(args[1]));
    std::string out = "{\"source\":";
    if (hint.source) {
        appendJsonString(out, toString(*hint.source));
    } else {
        out += "null";
    }
    out += ",\"text\":";
    appendJsonString(out, hint.text);
    out += '}';
    return out;
}

std::string destinationCommand(std::span<const std::string_view> args)
{
    expectArguments(args, 3);
    const GameState state = loadState(args[1]);
    const MoveSource source = sourceArgument(args[2]);
    const auto automatic = automaticDestination(state, source);
    const auto foundation = foundationDestination(state, source);
    std::string out = "{\"automatic\":";
    if (automatic) {
        appendJsonString(out, toString(*automatic));
    } else {
        out += "null";
    }
    out += ",\"foundation\":";
    out += foundation ? std::to_string(*foundation) : "null";
    out += '}';
    return out;
}

std::string finishCommand(std::span<const std::string_view> args)
{
    expectArguments(args, 2);
    const GameState state = loadState(args[1]);
    std::string out = "{\"hasNoBlockedKing\":";
    out += hasNoBlockedKing(state) ? "true" : "false";
    out += ",\"canAutoComplete\":";
    out += canAutoComplete(state) ? "true" : "false";
    out += ",\"next\":";
    if (const auto step = nextFoundationAutoMove(state)) {
        out += "{\"source\":";
        appendJsonString(out, toString(step->source));
        out += ",\"foundationIndex\":" + std::to_string(step->foundationIndex) + ",\"card\":";
        appendJson(out, step->card);
        out += '}';
    } else {
        out += "null";
    }
    out += '}';
    return out;
}

// The game a shared file would open, or the sentence the player would read instead.
int openCommand(std::span<const std::string_view> args)
{
    expectArguments(args, 2);
    auto document = ZelvaineGameDocument::read(std::filesystem::path(std::string(args[1])));
    std::optional<std::string> problem;
    std::string out;
    if (!document) {
        problem = document.error().playerDescription().value_or(sharedGameFailureText());
    } else if (auto states = document->makeStates(); !states) {
        problem = states.error().description();
    } else {
        out = "{\"currentState\":";
        appendJson(out, states->current);
        out += ",\"initialState\":";
        appendJson(out, states->initial);
        out += '}';
    }
    if (problem) {
        out = "{\"error\":";
        appendJsonString(out, *problem);
        out += '}';
    }
    std::cout << out << '\n';
    return problem ? 1 : 0;
}

std::string exportCommand(std::span<const std::string_view> args)
{
    expectArguments(args, 3);
    const GameState current = loadState(args[1]);
    const GameState initial = loadState(args[2]);
    if (!isWellFormed(current) || !isWellFormed(initial)) {
        throw UsageError{"only well-formed positions can be exported (10 columns, 8 foundations, 4 hand slots, "
                         "104 cards with distinct ids)"};
    }
    return ZelvaineGameDocument::fromStates(current, initial).encode();
}

std::string restoreCommand(std::span<const std::string_view> args)
{
    expectArguments(args, 2);
    const RestoredGame restored = restoreSavedGame(readAll(args[1]));
    static constexpr const char* names[] = {"savedGame", "position", "none"};
    std::string out = "{\"restored\":\"";
    out += names[static_cast<int>(restored.from)];
    out += "\",\"state\":";
    if (restored.game) {
        appendJson(out, restored.game->currentState);
    } else {
        out += "null";
    }
    out += ",\"historyCount\":" + std::to_string(restored.game ? restored.game->history.size() : 0);
    out += ",\"redoCount\":" + std::to_string(restored.game ? restored.game->redoHistory.size() : 0);
    out += ",\"challenge\":";
    if (restored.game) {
        appendJson(out, restored.game->challenge);
    } else {
        out += "null";
    }
    out += '}';
    return out;
}

std::uint64_t numberArgument(std::string_view name, std::string_view text)
{
    std::uint64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size()) {
        throw UsageError{"bad number \"" + std::string(text) + "\" for " + std::string(name)};
    }
    return value;
}

// "--name value" options and "--exact" after the positional arguments.
struct Options {
    std::optional<std::uint64_t> budget;
    std::optional<std::uint64_t> deals;
    std::optional<std::uint64_t> seed;
    bool exact = false;
};

Options parseOptions(std::span<const std::string_view> args, std::span<const std::string_view> allowed)
{
    Options options;
    for (std::size_t i = 0; i < args.size();) {
        const std::string_view name = args[i];
        if (std::ranges::find(allowed, name) == allowed.end()) {
            throw UsageError{"unknown option \"" + std::string(name) + "\""};
        }
        if (name == "--exact") {
            options.exact = true;
            i += 1;
            continue;
        }
        if (i + 1 >= args.size()) throw UsageError{std::string(name) + " needs a value"};
        const std::uint64_t value = numberArgument(name, args[i + 1]);
        if (name == "--budget") options.budget = value;
        if (name == "--deals") options.deals = value;
        if (name == "--seed") options.seed = value;
        i += 2;
    }
    return options;
}

solver::SolverOptions solverOptions(const Options& options)
{
    solver::SolverOptions settings = options.exact ? solver::exactOptions : solver::SolverOptions{};
    if (options.budget) {
        if (*options.budget == 0) throw UsageError{"--budget must be at least 1"};
        settings.positionBudget = *options.budget;
    }
    return settings;
}

// Processor time of the calling thread: on a busy machine wall-clock time would count the
// other programs too, while the targets are for one core of our own.
double threadCpuMilliseconds()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

double millisecondsSince(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

std::string number(double value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.4g", value);
    return text;
}

std::string solveCommand(std::span<const std::string_view> args)
{
    if (args.size() < 2) throw UsageError{"'solve' takes a position file"};
    static constexpr std::string_view allowed[] = {"--budget", "--exact"};
    const auto options = solverOptions(parseOptions(args.subspan(2), allowed));
    const GameState state = loadState(args[1]);
    if (auto reason = solver::unsolvableReason(state)) throw UsageError{"cannot solve this position: " + *reason};

    const auto start = std::chrono::steady_clock::now();
    const solver::SolveResult result = solver::solve(state, options);
    const auto milliseconds = static_cast<std::int64_t>(millisecondsSince(start));

    std::string out = "{\"verdict\":";
    appendJsonString(out, solver::toString(result.verdict));
    out += ",\"moves\":[";
    for (std::size_t i = 0; i < result.moves.size(); ++i) {
        if (i > 0) out += ',';
        appendJsonString(out, toString(result.moves[i].source) + ">" + toString(result.moves[i].destination));
    }
    out += "],\"length\":" + std::to_string(result.moves.size());
    out += ",\"positions\":" + std::to_string(result.positions);
    out += ",\"milliseconds\":" + std::to_string(milliseconds) + "}";
    return out;
}

std::string distribution(const std::vector<double>& values)
{
    std::string out = "{\"median\":" + number(solver::percentile(values, 0.5));
    out += ",\"p95\":" + number(solver::percentile(values, 0.95));
    out += ",\"p99\":" + number(solver::percentile(values, 0.99));
    out += ",\"max\":" + number(solver::percentile(values, 1.0)) + "}";
    return out;
}

// The share of all `deals` that got a verdict within `limit` milliseconds.
double shareOf(const std::vector<double>& decidedMilliseconds, double limit, std::uint64_t deals)
{
    const auto within = std::ranges::count_if(decidedMilliseconds, [&](double ms) { return ms <= limit; });
    return deals == 0 ? 0.0 : static_cast<double>(within) / static_cast<double>(deals);
}

// The most memory this process has held, as the system counts it.
double peakMemoryMegabytes()
{
    rusage resources{};
    getrusage(RUSAGE_SELF, &resources);
    return static_cast<double>(resources.ru_maxrss) / 1024.0; // kilobytes on Linux
}

std::string surveyCommand(std::span<const std::string_view> args)
{
    static constexpr std::string_view allowed[] = {"--deals", "--seed", "--budget", "--exact"};
    const Options options = parseOptions(args.subspan(1), allowed);
    if (!options.deals || !options.seed) throw UsageError{"'survey' needs --deals N and --seed S"};
    const auto solverSettings = solverOptions(options);

    // Deals ask for tables of different sizes; without this the allocator would pile freed
    // blocks up over thousands of deals, and the process's peak would say more about them than
    // about any one solve.
    solver::keepLargeBlocksMapped();
    SeededRandom random(*options.seed);
    std::uint64_t won = 0;
    std::uint64_t lost = 0;
    std::vector<double> milliseconds;
    std::vector<double> decidedMilliseconds;
    std::vector<double> lengths;
    for (std::uint64_t deal = 0; deal < *options.deals; ++deal) {
        const GameState state = dealNewGame(random);
        const double start = threadCpuMilliseconds();
        const solver::SolveResult result = solver::solve(state, solverSettings);
        milliseconds.push_back(threadCpuMilliseconds() - start);
        solver::releaseFreeMemory();
        if (result.verdict != solver::Verdict::unknown) decidedMilliseconds.push_back(milliseconds.back());
        if (result.verdict == solver::Verdict::winnable) {
            ++won;
            lengths.push_back(static_cast<double>(result.moves.size()));
        } else if (result.verdict == solver::Verdict::unwinnable) {
            ++lost;
        }
    }
    const std::uint64_t decided = won + lost;
    const auto [low, high] = solver::wilsonInterval(won, decided);
    std::string out = "{\"deals\":" + std::to_string(*options.deals);
    out += ",\"seed\":" + std::to_string(*options.seed);
    out += ",\"budget\":" + std::to_string(solverSettings.positionBudget);
    out += ",\"winnable\":" + std::to_string(won);
    out += ",\"unwinnable\":" + std::to_string(lost);
    out += ",\"unknown\":" + std::to_string(*options.deals - decided);
    out += ",\"winRate\":" + number(decided == 0 ? 0.0 : static_cast<double>(won) / static_cast<double>(decided));
    out += ",\"wilson95\":[" + number(low) + "," + number(high) + "]";
    // Everything that depends on the machine goes into "milliseconds", so that the rest repeats.
    std::string times = distribution(milliseconds);
    times.pop_back();
    times += ",\"verdictWithin250ms\":" + number(shareOf(decidedMilliseconds, 250.0, *options.deals));
    times += ",\"verdictWithin2s\":" + number(shareOf(decidedMilliseconds, 2000.0, *options.deals));
    times += ",\"peakMemoryMB\":" + number(peakMemoryMegabytes()) + "}";
    out += ",\"milliseconds\":" + times;
    out += ",\"solutionLength\":" + distribution(lengths);
    out += ",\"memoryBudgetMB\":" + std::to_string(solverSettings.memoryBudget >> 20) + "}";
    return out;
}

int run(std::span<const std::string_view> args)
{
    if (args.empty()) throw UsageError{"missing command"};
    const std::string_view command = args[0];
    std::string out;
    if (command == "deal") {
        expectArguments(args, 1);
        out = toJson(dealNewGame());
    } else if (command == "move") {
        out = moveCommand(args);
    } else if (command == "hint") {
        out = hintCommand(args);
    } else if (command == "destination") {
        out = destinationCommand(args);
    } else if (command == "finish") {
        out = finishCommand(args);
    } else if (command == "open") {
        return openCommand(args);
    } else if (command == "export") {
        std::cout << exportCommand(args); // the file's bytes exactly, no line end
        return 0;
    } else if (command == "restore") {
        out = restoreCommand(args);
    } else if (command == "solve") {
        out = solveCommand(args);
    } else if (command == "survey") {
        out = surveyCommand(args);
    } else if (command == "show") {
        expectArguments(args, 2);
        std::cout << boardText(loadState(args[1]));
        return 0;
    } else if (command == "help" || command == "--help" || command == "-h") {
        std::cout << usage;
        return 0;
    } else {
        throw UsageError{"unknown command \"" + std::string(command) + "\""};
    }
    std::cout << out << '\n';
    return 0;
}

} // namespace
} // namespace zelvaine::cli

int main(int argc, char** argv)
{
    std::vector<std::string_view> args(argv + 1, argv + argc);
    try {
        return zelvaine::cli::run(args);
    } catch (const zelvaine::cli::UsageError& error) {
        std::cerr << "zelvaine-cli: " << error.message << '\n';
        if (args.empty()) std::cerr << zelvaine::cli::usage;
        return 2;
    }
}
