// Teams, nested regions, many callers at once, and a child process.
#include <sys/wait.h>
#include <unistd.h>

#include <thread>

#include "routines/sizes.h"
#include "support/checker.h"
#include "support/each_form.h"
#include "support/scene.h"
#include "support/thread_number.h"

namespace kormtest {
namespace {

class Threads : public EachForm {};

TEST_P(Threads, TeamsGiveTheSameBits) { expectPass(checkTeams(form(), library(), options)); }

INSTANTIATE_TEST_SUITE_P(Forms, Threads, testing::Range(std::size_t{0}, allForms().size()), formName);

// A call that forks, on this thread's own arena. Inside of another region the team is one thread.
Verdict forkedCall(const Form& form, std::int32_t threads, std::int32_t team, Random& random) {
    SceneOptions options;
    options.sizes = sizesBeyondLimit(form, threads + 1, random);
    options.plain = random.chance(50);
    Random values(random.next());
    const Scene scene(threadArena(), form, options, random, values);
    scriptThreadNumbers({threads});
    Verdict verdict = scene.run(Library::linked(), 0, true, team);
    if (verdict.ok && threadNumberQuestions() != 2) verdict = Verdict::fail("did not fork: " + scene.describe());
    return verdict;
}

std::vector<const Form*> formsWithDrivers() {
    std::vector<const Form*> forms;
    for (const Form& form : allForms())
        if (form.driver) forms.push_back(&form);
    return forms;
}

TEST(ThreadsTogether, ManyCallersAtOnce) {
    const auto forms = formsWithDrivers();
    const Options options = Options::fromEnvironment();
    std::vector<std::string> messages(6);
    std::vector<std::thread> callers;
    for (std::size_t caller = 0; caller < messages.size(); ++caller) {
        callers.emplace_back([&, caller] {
            Random random(mixSeed(options.seed, 1000 + caller));
            for (int i = 0; i < options.share(150) && messages[caller].empty(); ++i) {
                const Form& form =
                    *forms[static_cast<std::size_t>(random.between(0, static_cast<std::int32_t>(forms.size()) - 1))];
                const std::int32_t threads = random.between(2, 4);
                messages[caller] = forkedCall(form, threads, threads, random).message;
            }
        });
    }
    for (std::thread& caller : callers) caller.join();
    for (const std::string& message : messages) EXPECT_EQ(message, "");
}

TEST(ThreadsTogether, InsideARegionOfTheCaller) {
    const auto forms = formsWithDrivers();
    std::vector<std::string> messages(3);
#pragma omp parallel num_threads(3)
    {
#pragma omp critical(chooseMessage)
        {
            // One after the other, so that each member of the team makes its share of calls.
            static std::size_t member = 0;
            const std::size_t self = member++ % messages.size();
            Random random(mixSeed(77, self));
            for (std::size_t i = self; i < forms.size() && messages[self].empty(); i += messages.size())
                messages[self] = forkedCall(*forms[i], 4, 1, random).message;
        }
    }
    for (const std::string& message : messages) EXPECT_EQ(message, "");
}

TEST(ThreadsTogether, InAChildProcess) {
#ifdef KORM_THREAD_SANITIZER
    GTEST_SKIP() << "ThreadSanitizer allows no threads in a child of a process with threads";
#endif
    Random random(5);
    const Form& form = formNamed("kormAdd_mam_32f");
    expectPass(forkedCall(form, 4, 4, random));
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        alarm(60);
        for (int i = 0; i < 10; ++i)
            if (!forkedCall(form, 4, 4, random).ok) _exit(1);
        _exit(0);
    }
    int state = 0;
    ASSERT_EQ(waitpid(child, &state, 0), child);
    EXPECT_TRUE(WIFEXITED(state)) << "ended by signal " << WTERMSIG(state);
    EXPECT_EQ(WEXITSTATUS(state), 0);
    expectPass(forkedCall(form, 4, 4, random));
}

}  // namespace
}  // namespace kormtest
