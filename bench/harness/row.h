// How a row of the benchmarks is declared and measured.
//
//     if (const std::string name = "packed/Copy_ma_32f/4/cache"; isWanted(name)) {
//         Row row(name, count);
//         row.results(target, elements, 0);
//         row.korm([=] { kormCopy_ma_32f(source, 64, 16, 4, target, 64, 16, 4, 4, 4, count); });
//         row.peer("memcpy", [=] { std::memcpy(target, source, elements * sizeof(float)); });
//         row.measure();
//     }
//
// A name is SECTION/FORM/SIZE[/PLACE]: the report makes a table of each section and plots over the size. Sections that
// begin with "sweep" are maps over all small sizes: their size is a length, ROWSxCOLUMNS or ROWSxINNERxCOLUMNS, their
// samples are short.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace bench {

struct Settings {
    bool quick = false;   // fewer and shorter samples
    bool isList = false;  // names are printed, nothing is measured
    std::string filter;   // a regular expression that a row's name must contain
};
extern Settings settings;

// The answer that the library gets when it asks how many threads it may use.
extern std::int32_t threadsAllowed;

// Asked before a row's memory is prepared.
bool isWanted(const std::string& name);

// A fact about the run for the report: a peer's version, say.
void note(const std::string& key, const std::string& value);
inline void noteVersion(const std::string& peer, int major, int minor, int patch) {
    note(peer, std::to_string(major) + "." + std::to_string(minor) + "." + std::to_string(patch));
}

using Run = std::function<void()>;
using Value = std::function<double(std::size_t)>;

class Row {
public:
    // Times are told by the object.
    Row(std::string name, double objects) : name_(std::move(name)), objects_(objects) {}

    // What every contender writes: the elements must equal the library's within `tolerance`, relative to the largest of
    // them. With 0 they must be equal.
    template <class T>
    void results(T* elements, std::size_t count, double tolerance) {
        values_ = count;
        tolerance_ = tolerance;
        clear_ = [=] { std::fill_n(elements, count, T(-1)); };
        value_ = [=](std::size_t i) { return static_cast<double>(elements[i]); };
    }

    // The same for objects of which only the first `used` of `step` elements are results.
    template <class T>
    void results(T* elements, std::size_t count, std::size_t used, std::size_t step, double tolerance) {
        results(elements, count, tolerance);
        values_ = count / step * used;
        value_ = [=](std::size_t i) { return static_cast<double>(elements[i / used * step + i % used]); };
    }

    // The library. A contender whose results lie elsewhere, or in another order, says what the i-th one is.
    void korm(Run run, Value value = nullptr) { add("korm", std::move(run), false, std::move(value)); }
    // An array form as `call(objects)`, and beside it what a call with one object takes.
    template <class Call>
    void kormWithCall(const Call& call, std::int32_t objects) {
        korm([=] { call(objects); });
        control("call with one object", [=] { call(1); });
    }
    // What one would use otherwise.
    void peer(std::string name, Run run, Value value = nullptr) {
        add(std::move(name), std::move(run), false, std::move(value));
    }
    // Measured beside the others, but no peer: another function of the library, or a loop that only copies. Its results are
    // not compared.
    void control(std::string name, Run run) { add(std::move(name), std::move(run), true, nullptr); }

    // A number for the report.
    void fact(const std::string& key, double value) { facts_.push_back({key, value}); }
    // Contenders may run on several threads, so the time that passes is measured in place of the thread's own.
    void usesThreads() { usesThreads_ = true; }

    // Compares the results, then takes the times, and keeps the row for the report.
    void measure();

private:
    struct Contender {
        std::string name;
        Run run;
        bool isControl;
        Value value;
        long calls = 1;  // in one sample
        std::vector<double> samples;
    };
    void add(std::string name, Run run, bool isControl, Value value) {
        contenders_.push_back({std::move(name), std::move(run), isControl, std::move(value), 1, {}});
    }
    std::string firstToDiffer() const;
    double nanosecondsNow() const;
    double sample(const Contender& contender) const;
    void chooseCalls(Contender& contender, double nanoseconds) const;
    void takeSamples(int rounds);
    double ratio() const;
    void keep(const std::string& error) const;

    std::string name_;
    double objects_;
    std::size_t values_ = 0;
    double tolerance_ = 0;
    Run clear_;
    Value value_;
    std::vector<Contender> contenders_;
    std::vector<std::pair<std::string, double>> facts_;
    bool usesThreads_ = false;
};

// The call with this answer; the rows that follow expect one thread.
inline Run onThreads(std::int32_t threads, Run call) {
    return [=] {
        threadsAllowed = threads;
        call();
        threadsAllowed = 1;
    };
}

// Measures every row of the program. Each program defines it.
void measureRows();

}  // namespace bench
