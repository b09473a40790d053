// Runs a fuzz target on files, or on all files of folders, without libFuzzer:
// for compilers that lack it, and to keep the corpus honest in every test run.

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

namespace {

int ran = 0;

bool runFile(const std::filesystem::path &path)
{
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        std::fprintf(stderr, "cannot read %s\n", path.c_str());
        return false;
    }
    const std::vector<char> bytes(std::istreambuf_iterator<char>(in), {});
    // Named ahead of the run, so that an input that aborts is known.
    std::printf("%s\n", path.c_str());
    std::fflush(stdout);
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(bytes.data()), bytes.size());
    ++ran;
    return true;
}

} // namespace

int main(int argc, char **argv)
{
    bool isComplete = true;
    for (int i = 1; i < argc; ++i) {
        if (!std::filesystem::is_directory(argv[i])) {
            isComplete = runFile(argv[i]) && isComplete;
            continue;
        }
        for (const auto &entry : std::filesystem::directory_iterator(argv[i]))
            isComplete = runFile(entry.path()) && isComplete;
    }
    std::printf("%d inputs\n", ran);
    return isComplete && ran > 0 ? 0 : 1;
}
