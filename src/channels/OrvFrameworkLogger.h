#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace orv {

/// Exists so that its class can be the key under which the whole library logs.
class OrvAnnotation {
public:
    static constexpr const char *className = "OrvAnnotation";
};

/// Takes finished lines in place of the system log.
class OrvFrameworkLoggerDelegate {
public:
    /// False: this delegate does not take lines, and counts as none.
    [[nodiscard]] virtual bool respondsToOutputLog() const { return true; }
    /// `sender` is the delegate itself. Called on the thread that logs.
    virtual void logger(const void *sender, std::int32_t level, const std::string &outputLog) = 0;

protected:
    virtual ~OrvFrameworkLoggerDelegate() = default;
};

/// The process-wide log: a threshold for each class, a delegate, else the system log.
///
/// Thread   any. A delegate is called outside the logger's own lock.
class OrvFrameworkLogger {
public:
    /// Made at first use, with `standardOutput` true and no thresholds.
    static OrvFrameworkLogger &shared();
    /// Forgets thresholds, delegate and output: the next `shared` is a new one.
    static void release();

    void setLevel(const std::string &className, std::uint32_t level);
    /// 0 when none is stored.
    [[nodiscard]] std::uint32_t getLevel(const std::string &className) const;
    /// "DEBUG" for 0 and 1, "INFO", "WARN", "ERROR", "FATAL" for 2 to 5, "ALL" above.
    [[nodiscard]] static std::string levelString(std::uint32_t level);

    void setStandardOutput(bool standardOutput);
    [[nodiscard]] bool standardOutput() const;
    /// Not owned; null for none.
    void setDelegate(OrvFrameworkLoggerDelegate *delegate);

    void print(const std::string &className, std::uint32_t level, const std::string &log);
    /// With the function and the line that it comes from.
    void print(const std::string &className, std::uint32_t level, const std::string &log,
               const std::string &func, std::int32_t line);
    /// Stops when the class's threshold is above the level.
    void outputLog(const std::string &className, std::uint32_t level, const std::string &log);

private:
    mutable std::mutex mutex_;
    std::map<std::string, std::uint32_t> loggers_;
    bool standardOutput_ = true;
    OrvFrameworkLoggerDelegate *delegate_ = nullptr;
};

/// How every part of the library logs: under the library's own class.
void logLine(std::uint32_t level, const std::string &message);

} // namespace orv
