// What a build of a real project costs, beside writing, reading and comparing the same bytes by hand.
//
//     out/release/bin/build_site [TOPICS...]
//
// The pages go below TMPDIR. A file system such as ext4 is slow for minutes after many files were deleted, as
// they are at the end of a run: give it time, or a file system that was just made.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <stdexcept>

#include "MadeUpProject.h"
#include "build/BuildResult.h"
#include "content/GlossaryItems.h"

namespace quillbox::bench {
namespace {

namespace fs = std::filesystem;

constexpr int kRounds = 3;
constexpr int kTerms = 500;
// Where the memory of a build is measured.
constexpr int kMemoryTopics = 10000;

using Milliseconds = double;

// As a user waits: a build keeps two processors busy.
template <class Work>
Milliseconds timeOf(const Work& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

// In kilobytes, by its name in the status of the process.
long memory(const std::string& name) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(name + ":")) return std::atol(line.c_str() + name.size() + 1);
    }
    throw std::runtime_error("the system does not tell " + name);
}

void forgetPeakMemory() { std::ofstream("/proc/self/clear_refs") << "5"; }

// Everything below is written to a folder of its own; nothing is removed before the last figure is taken, as
// removing many files slows the file system.
class Workplace {
  public:
    Workplace() {
        auto pattern = (fs::temp_directory_path() / "quillbox-site-XXXXXX").string();
        if (!mkdtemp(pattern.data())) throw std::runtime_error("cannot make a folder " + pattern);
        mFolder = pattern;
    }
    ~Workplace() {
        std::error_code ignored;
        fs::remove_all(mFolder, ignored);
    }
    Workplace(const Workplace&) = delete;
    Workplace& operator=(const Workplace&) = delete;

    std::string Fresh() {
        const auto folder = mFolder / std::to_string(++mCount);
        fs::create_directory(folder);
        return folder.string() + "/";
    }

  private:
    fs::path mFolder;
    int mCount = 0;
};

// The made-up project with all that a page template reads: glossary references, see-also links, a start page.
Ref<QbProject> site(int topics) {
    auto project = madeUpProject(topics);
    project->SetCompileType(CompileHTMLHelp1);
    for (int i = 0; i < kTerms; ++i) {
        const auto item =
            project->NewGlossaryItem(numbered("term ", i), numbered("What is meant by term ", i));
        project->GlossaryItems()->Add(item, item->Key);
    }
    int number = 0;
    const auto all = project->Topics->Items();
    for (const auto& topic : all) {
        topic->SetPauseEvents(true);
        topic->SetTopicSectionData("BodyText", topic->TopicSectionData("BodyText") + "<p>Read $$" +
                                                   numbered("term ", number % kTerms) + "$$ and $$" +
                                                   numbered("Term ", number * 7 % kTerms) + "$$ too.</p>");
        for (int link = 1; link <= 3; ++link) {
            auto related = make<RelatedTopic>();
            related->ChildTopicKey = all[static_cast<std::size_t>((number + link * 17) % topics)]->Key;
            related->SetCategory(link == 1 ? "" : "See also");
            related->SetParentTopic(topic);
            topic->RelatedTopics()->Add(related);
        }
        topic->SetPauseEvents(false);
        ++number;
    }
    return project;
}

void build(QbProject& project, const std::string& folder) {
    project.Filename->SetPath(folder + "site.qbp");
    project.SetOutputFileName(folder + "site.chm");
    Ref<Document> own;
    if (project.Build(own, "", false, false, false)->Cancelled) throw std::runtime_error("cancelled");
}

struct File {
    std::string name, bytes;
};

std::vector<File> filesOf(const std::string& folder) {
    std::vector<File> files;
    for (const auto& entry : fs::directory_iterator(folder)) {
        std::ifstream stream(entry.path(), std::ios::binary);
        files.push_back({entry.path().filename().string(), {std::istreambuf_iterator<char>(stream), {}}});
    }
    return files;
}

[[noreturn]] void fail(const std::string& path) { throw std::runtime_error("trouble with " + path); }

void writePlainly(const std::string& folder, const std::vector<File>& files) {
    for (const auto& file : files) {
        const auto path = folder + file.name;
        const int handle = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
        if (handle < 0) fail(path);
        const auto put = write(handle, file.bytes.data(), file.bytes.size());
        if (put != static_cast<ssize_t>(file.bytes.size()) || close(handle) != 0) fail(path);
    }
}

void readAndCompare(const std::string& folder, const std::vector<File>& files) {
    std::string bytes;
    for (const auto& file : files) {
        const auto path = folder + file.name;
        const int handle = open(path.c_str(), O_RDONLY | O_CLOEXEC);
        struct stat state {};
        if (handle < 0 || fstat(handle, &state) != 0) fail(path);
        bytes.resize(static_cast<std::size_t>(state.st_size));
        if (read(handle, bytes.data(), bytes.size()) != state.st_size || bytes != file.bytes) fail(path);
        close(handle);
    }
}

struct Figures {
    int topics = 0;
    std::size_t bytes = 0;
    Milliseconds build = 1e9, plain = 1e9, again = 1e9, compare = 1e9;
    std::optional<long> kilobytes;
};

void keepBest(Milliseconds& best, Milliseconds now) { best = std::min(best, now); }

Figures measure(int topics, Workplace& workplace) {
    Figures figures;
    figures.topics = topics;
    const auto project = site(topics);
    const auto folder = workplace.Fresh();
    forgetPeakMemory();
    const auto loaded = memory("VmRSS");
    keepBest(figures.build, timeOf([&] { build(*project, folder); }));
    if (topics == kMemoryTopics) figures.kilobytes = memory("VmHWM") - loaded;
    const auto files = filesOf(folder);
    for (const auto& file : files) figures.bytes += file.bytes.size();
    for (int round = 1; round <= kRounds; ++round) {
        const auto plain = workplace.Fresh();
        keepBest(figures.plain, timeOf([&] { writePlainly(plain, files); }));
        if (round == kRounds) break;
        const auto again = workplace.Fresh();
        keepBest(figures.build, timeOf([&] { build(*project, again); }));
    }
    for (int round = 0; round < kRounds; ++round) {
        keepBest(figures.again, timeOf([&] { build(*project, folder); }));
        keepBest(figures.compare, timeOf([&] { readAndCompare(folder, files); }));
    }
    return figures;
}

void print(const std::vector<Figures>& all) {
    std::printf("%8s %8s | %9s %9s %6s | %9s %9s %6s\n", "topics", "MB", "build ms", "plain ms", "times",
                "again ms", "compare", "times");
    for (const auto& one : all) {
        std::printf("%8d %8.1f | %9.1f %9.1f %6.2f | %9.1f %9.1f %6.2f\n", one.topics,
                    static_cast<double>(one.bytes) / 1e6, one.build, one.plain, one.build / one.plain,
                    one.again, one.compare, one.again / one.compare);
    }
    for (std::size_t at = 1; at < all.size(); ++at) {
        std::printf("from %d to %d topics the build takes %.2f times as long\n", all[at - 1].topics,
                    all[at].topics, all[at].build / all[at - 1].build);
    }
    for (const auto& one : all) {
        if (one.kilobytes)
            std::printf("at %d topics the build needs at most %.1f MB above the loaded project\n", one.topics,
                        static_cast<double>(*one.kilobytes) / 1e3);
    }
}

}  // namespace
}  // namespace quillbox::bench

int main(int count, char** arguments) {
    using namespace quillbox::bench;
    std::vector<int> sizes;
    for (int at = 1; at < count; ++at) sizes.push_back(std::atoi(arguments[at]));
    if (sizes.empty()) sizes = {1000, 10000, 50000};
    try {
        Workplace workplace;
        std::vector<Figures> figures;
        for (const int size : sizes) figures.push_back(measure(size, workplace));
        print(figures);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
