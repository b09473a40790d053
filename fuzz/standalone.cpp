// Runs a fuzz target on files, or on all files of folders, without libFuzzer:
// for compilers that lack it, and to keep the corpus honest in every test run.
//
//     <target> [--mutate N] FILE-OR-FOLDER…
//
// With --mutate each input also runs N times with random changes, the same
// ones in every run, so that what breaks can be run again under a debugger.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string_view>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

namespace {

int ran = 0;

using Bytes = std::vector<std::uint8_t>;

void run(const Bytes &bytes)
{
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
    ++ran;
}

/// Changes, adds, removes or doubles a few bytes.
void mutate(Bytes &bytes, std::mt19937 &random)
{
    for (auto changes = 1 + random() % 4; changes > 0; --changes) {
        const auto place = bytes.empty() ? 0 : static_cast<std::ptrdiff_t>(random() % bytes.size());
        const auto byte = static_cast<std::uint8_t>(random());
        switch (bytes.empty() ? 0 : random() % 4) {
        case 0: bytes.insert(bytes.begin() + place, byte); break;
        case 1: bytes.erase(bytes.begin() + place); break;
        case 2: bytes[static_cast<std::size_t>(place)] = byte; break;
        default: {
            const Bytes tail(bytes.begin() + place,
                             bytes.begin() + place + std::min<std::ptrdiff_t>(16, std::ssize(bytes) - place));
            bytes.insert(bytes.end(), tail.begin(), tail.end());
        }
        }
    }
}

bool runFile(const std::filesystem::path &path, int mutations)
{
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        std::fprintf(stderr, "cannot read %s\n", path.c_str());
        return false;
    }
    const Bytes bytes(std::istreambuf_iterator<char>(in), {});
    // Named ahead of the run, so that an input that aborts is known.
    std::printf("%s\n", path.c_str());
    std::fflush(stdout);
    run(bytes);
    std::mt19937 random(static_cast<unsigned>(bytes.size()));
    for (int i = 0; i < mutations; ++i) {
        Bytes mutated = bytes;
        mutate(mutated, random);
        run(mutated);
    }
    return true;
}

} // namespace

int main(int argc, char **argv)
{
    bool isComplete = true;
    int mutations = 0;
    for (int i = 1; i < argc; ++i) {
        if (std::string_view(argv[i]) == "--mutate" && i + 1 < argc) {
            mutations = std::atoi(argv[++i]);
            continue;
        }
        if (!std::filesystem::is_directory(argv[i])) {
            isComplete = runFile(argv[i], mutations) && isComplete;
            continue;
        }
        for (const auto &entry : std::filesystem::directory_iterator(argv[i]))
            isComplete = runFile(entry.path(), mutations) && isComplete;
    }
    std::printf("%d inputs\n", ran);
    return isComplete && ran > 0 ? 0 : 1;
}
