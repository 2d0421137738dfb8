// srfind over places that only this system has: closed folders, links, names of any bytes, locks,
// long paths, a shortage of descriptors.
#include <fcntl.h>
#include <grp.h>
#include <sys/inotify.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <memory>
#include <sstream>

#include "tests/native/file_holder.h"
#include "tests/unit/search_fixture.h"
#include "tests/unit/srfind_run.h"

namespace {

namespace fs = std::filesystem;

constexpr uid_t kNobody = 65534;

std::size_t CountOf(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; ++at)
        ++count;
    return count;
}

class SrfindPlaces : public SearchTest {
protected:
    // Hits end in a null, so that any name can be told. They come back relative and sorted.
    SrfindRun Run(std::vector<std::string> arguments, const std::string& lookIn = "") {
        arguments.insert(arguments.begin(), "--print0");
        if (lookIn != "-") arguments.push_back((folder_ / lookIn).string());
        return Tidy(RunSrfind(arguments));
    }
    // In a child that `prepare` may take rights from; it says no when that didn't work.
    SrfindRun RunAside(const std::function<bool()>& prepare, std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "--print0");
        arguments.push_back(folder_.string());
        const fs::path answer = folder_.string() + ".answer";
        const pid_t child = fork();
        if (child == 0) {
            std::FILE* out = std::fopen(answer.c_str(), "wb");
            if (out == nullptr || !prepare()) _exit(99);
            const SrfindRun run = RunSrfind(arguments);
            const std::string text = run.out + '\1' + run.err;
            std::fwrite(text.data(), 1, text.size(), out);
            std::fclose(out);
            _exit(run.status);
        }
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_TRUE(WIFEXITED(status)) << "signal " << WTERMSIG(status);
        std::ostringstream text;
        text << std::ifstream(answer, std::ios::binary).rdbuf();
        fs::remove(answer);
        const std::string whole = text.str();
        const std::size_t parted = std::min(whole.find('\1'), whole.size());
        return Tidy({WEXITSTATUS(status), whole.substr(0, parted), whole.substr(parted)});
    }

    SrfindRun Tidy(SrfindRun run) const {
        std::vector<std::string> hits;
        std::istringstream out(run.out);
        const std::string root = folder_.string() + "/";
        for (std::string hit; std::getline(out, hit, '\0');)
            hits.push_back(hit.rfind(root, 0) == 0 ? hit.substr(root.size()) : "? " + hit);
        run.out.clear();
        for (const std::string& hit : Sorted(hits))
            run.out += hit + "|";
        return run;
    }
};

bool BecomeNobody() {
    if (geteuid() != 0) return true;
    return setgroups(0, nullptr) == 0 && setgid(kNobody) == 0 && setuid(kNobody) == 0;
}

TEST_F(SrfindPlaces, ClosedFoldersAndFilesAreNamed) {
    Tree({"closed/in.hpa", "sub/open.hpa"});
    Document("open.hpa", nullptr);
    Document("shut.hpa", nullptr);
    fs::permissions(folder_ / "closed", fs::perms::none);
    fs::permissions(folder_ / "shut.hpa", fs::perms::none);
    const auto prepare = [this] {
        if (!BecomeNobody()) return false;
        // Nothing is closed to root, so the closing has to be seen to work.
        return open((folder_ / "closed").c_str(), O_RDONLY) < 0 && errno == EACCES &&
               open((folder_ / "shut.hpa").c_str(), O_RDONLY) < 0 && errno == EACCES;
    };
    const SrfindRun names = RunAside(prepare, {"-r", "-w", "File name ends with .hpa"});
    EXPECT_EQ(3, names.status);
    EXPECT_EQ("open.hpa|shut.hpa|sub/open.hpa|", names.out);
    EXPECT_EQ(1u, CountOf(names.err, folder_.string() + "/closed"));
    EXPECT_EQ(1u, CountOf(names.err, "could not be read")) << names.err;
    const SrfindRun titles = RunAside(prepare, {"-w", "Title differs from x"});
    EXPECT_EQ(3, titles.status);
    EXPECT_EQ("open.hpa|", titles.out);
    EXPECT_NE(std::string::npos, titles.err.find("/shut.hpa may not be read")) << titles.err;
    fs::permissions(folder_ / "closed", fs::perms::all);
}

TEST_F(SrfindPlaces, LinksToFoldersAreNotWalked) {
    Document("a/b/real.hpa", nullptr);
    Tree({"z/"});
    fs::create_directory_symlink("..", folder_ / "a/b/up");
    fs::create_directory_symlink("../a", folder_ / "z/link");
    fs::create_symlink("a/b/real.hpa", folder_ / "link.hpa");
    fs::create_symlink("itself.hpa", folder_ / "itself.hpa");
    const std::vector<std::string> question = {"-r", "-w", "File name ends with .hpa"};
    const SrfindRun run = Run(question);
    EXPECT_EQ(0, run.status);
    EXPECT_EQ("a/b/real.hpa|itself.hpa|link.hpa|", run.out);
    EXPECT_EQ("", run.err);
    // The folder to look in may be a link itself, and the hits are named by it.
    EXPECT_EQ("z/link/b/real.hpa|", Run(question, "z/link").out);
    EXPECT_EQ("a/b/up/b/real.hpa|", Run(question, "a/b/up").out);
    // A folder that becomes a link while the search runs is none to walk either.
    Tree({"p/x/in.hpa", "p/y/in.hpa", "aside/other.hpa"});
    onFile_ = [this, count = 0](SRxSearchRun&) mutable {
        if (count++ != 0) return;
        const fs::path waiting = folder_ / "p" / (folders_.back().back() == 'x' ? "y" : "x");
        fs::remove_all(waiting);
        fs::create_directory_symlink(folder_ / "aside", waiting);
    };
    EXPECT_EQ(1u, RunFolders(true, "p").size());
    EXPECT_EQ(1u, failedFolders_.size());
    // A pipe isn't opened, by a link neither: its writer would lose what it has.
    ASSERT_EQ(0, mkfifo((folder_ / "aside/pipe.hpa").c_str(), 0600));
    fs::create_symlink("pipe.hpa", folder_ / "aside/to_pipe.hpa");
    const int opened = inotify_init1(IN_NONBLOCK);
    ASSERT_LE(0, inotify_add_watch(opened, (folder_ / "aside/pipe.hpa").c_str(), IN_OPEN));
    EXPECT_EQ(3, Run({"-w", "Title contains x"}, "aside").status);
    inotify_event event;
    EXPECT_GT(0, read(opened, &event, sizeof event));
    close(opened);
    // A link that leads nowhere has no properties that could be read.
    const SrfindRun titles = Run({"-w", "Title differs from x"});
    EXPECT_EQ("link.hpa|", titles.out);
    EXPECT_EQ(3, titles.status);
    EXPECT_EQ(1u, CountOf(titles.err, "/itself.hpa "));
}

TEST_F(SrfindPlaces, NamesOfAnyBytesArePrintedAsTheyAre) {
    std::vector<std::string> names = {
        "\xFF\xFE.hpa",    "\xC3.hpa",   "\xED\xA0\x80.hpa", "\xEF\xBF\xBD.hpa", "\xEF\x80\xBA.hpa",
        "back\\slash.hpa", "co:lon.hpa", "line\nfeed.hpa",   "<angle>.hpa",      "star*?|\".hpa",
        " blank .hpa",     "dots...hpa", "\1\x7F.hpa",       "-r.hpa",
    };
    names.push_back("Gr\xC3\xB6\xC3\x9F.hpa");
    names.push_back(std::string(251, 'x') + ".hpa");
    std::string all;
    std::string listed;
    std::vector<std::string> paths;
    for (const char* folder : {"", "in \xFF\n:\\/"}) {
        for (const std::string& name : names) {
            paths.push_back(folder + name);
            WriteFile(paths.back(), {});
            if (paths.back().find('\n') == std::string::npos)
                listed += (folder_ / paths.back()).string() + "\n";
        }
    }
    for (const std::string& path : Sorted(paths))
        all += path + "|";
    const SrfindRun run = Run({"-r", "-w", "File name ends with .hpa"});
    EXPECT_EQ(0, run.status);
    EXPECT_EQ(all, run.out);
    EXPECT_EQ("", run.err);
    // Also by a list of files, but for the names that a line can't hold.
    WriteFile("list", {listed.begin(), listed.end()});
    const SrfindRun list =
        Run({"-w", "File name ends with .hpa", "--files-from", (folder_ / "list").string()}, "-");
    EXPECT_EQ(0, list.status);
    EXPECT_EQ(15, std::count(list.out.begin(), list.out.end(), '|') - 1) << "one name holds a |";
    // A typed name meets the file's.
    for (const std::string& name : names) {
        const SrfindRun one = Run({"-w", "File name equals " + name});
        if (name.size() <= 127) {
            EXPECT_EQ(name + "|", one.out);
        } else {
            EXPECT_EQ(2, one.status);
        }
    }
}

TEST_F(SrfindPlaces, LockedFilesAreNamedAndOneBoxTellsOfThem) {
    for (const char* name : {"flock.hpa", "fcntl.hpa", "free.hpa"})
        Document(name, nullptr);
    const Holder first(folder_ / "flock.hpa", [](int f) { return flock(f, LOCK_EX) == 0; });
    const Holder second(folder_ / "fcntl.hpa", [](int f) { return Lock(f, F_WRLCK, 0, 0); });
    ASSERT_TRUE(first.IsHeld() && second.IsHeld());
    const SrfindRun run = Run({"-w", "Title differs from x"});
    EXPECT_EQ(3, run.status);
    EXPECT_EQ("free.hpa|", run.out);
    EXPECT_EQ(2u, CountOf(run.err, " is in use by another program"));
    EXPECT_EQ(1u, CountOf(run.err, "/flock.hpa is in use by another program\n"));
    EXPECT_EQ(1u, CountOf(run.err, "/fcntl.hpa is in use by another program\n"));
    // The first one of a search is told apart.
    Criterion("Title differs from x");
    for (std::size_t search = 1; search <= 2; ++search) {
        EXPECT_EQ(1u, RunFolders().size());
        EXPECT_EQ(search, inUse_.size());
    }
}

// The lock is met when the document is open already.
TEST_F(SrfindPlaces, LockedPartCountsWhenItIsAskedFor) {
    Document(
        "deep.hpa",
        [](PropertySectionWriter& set) {
            set.AddPicture(2, std::vector<std::uint8_t>(60000));
            set.AddText(17, TEXT("Steel"));
            set.AddPicture(18, std::vector<std::uint8_t>(60000));
        },
        nullptr, [](PropertySectionWriter& set) { set.AddText(2, TEXT("Deep")); });
    const Holder holder(folder_ / "deep.hpa", [](int f) { return Lock(f, F_WRLCK, 50000, 20000); });
    ASSERT_TRUE(holder.IsHeld());
    EXPECT_EQ(0, Run({"-w", "Title equals Deep"}).status);
    const SrfindRun run = Run({"-w", "Material differs from x"});
    EXPECT_EQ(3, run.status);
    EXPECT_EQ(1u, CountOf(run.err, "/deep.hpa is in use by another program\n"));
    Criterion("Material differs from x");
    EXPECT_TRUE(RunFolders().empty());
    EXPECT_EQ((std::vector<std::string>{"deep.hpa"}), inUse_);
}

TEST_F(SrfindPlaces, PathsLongerThanTheSystemTakes) {
    std::string path = folder_.string();
    while (path.size() < 5000)
        path += "/" + std::string(200, 'd');
    Tree({"a.hpa"});
    const std::string text = path + "/x.hpa\n" + (folder_ / "a.hpa").string() + "\n";
    WriteFile("list", {text.begin(), text.end()});
    const SrfindRun run =
        Run({"-w", "File name ends with .hpa", "--files-from", (folder_ / "list").string()}, "-");
    EXPECT_EQ(3, run.status);
    EXPECT_EQ("a.hpa|", run.out);
    EXPECT_EQ(1u, CountOf(run.err, path + "/x.hpa")) << "named whole";
}

TEST_F(SrfindPlaces, FewDescriptorsAreEnoughAndTheirLackIsTold) {
    std::string deep = "d";
    for (int i = 0; i < 40; ++i, deep += "/d")
        Document(deep + "/a.hpa", nullptr);
    const auto limit = [](rlim_t more) {
        return [more] {
            const int next = open("/dev/null", O_RDONLY);
            if (next < 0 || close(next) != 0) return false;
            struct rlimit few = {};
            few.rlim_cur = few.rlim_max = static_cast<rlim_t>(next) + more;
            return setrlimit(RLIMIT_NOFILE, &few) == 0;
        };
    };
    const std::vector<std::string> question = {"-r", "-w", "Title differs from x"};
    const SrfindRun enough = RunAside(limit(4), question);
    EXPECT_EQ(0, enough.status) << enough.err;
    EXPECT_EQ(40u, CountOf(enough.out, "|"));
    const SrfindRun none = RunAside(limit(0), question);
    EXPECT_EQ(3, none.status);
    EXPECT_EQ("", none.out);
    EXPECT_NE(std::string::npos, none.err.find(folder_.string())) << none.err;
}

// Without a current folder a path from it means nothing, above all not the root.
TEST_F(SrfindPlaces, TheCurrentFolderIsGone) {
    const fs::path before = fs::current_path();
    fs::create_directories(folder_ / "gone");
    fs::current_path(folder_ / "gone");
    fs::remove(folder_ / "gone");
    Criterion("File name contains .");
    EXPECT_TRUE(RunTyped(TEXT("sub")).empty());
    EXPECT_EQ((std::vector<WText>{TEXT("sub")}), failedFolders_);
    EXPECT_FALSE(routeResult_);
    EXPECT_EQ(0u, files_);
    fs::current_path(before);
}

}  // namespace
