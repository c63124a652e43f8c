#include "channels/OrvFrameworkLogger.h"

#include "platform/ports/Platform.h"
#include "platform/ports/SystemLog.h"

#include <fmt/format.h>

namespace orv {

OrvFrameworkLogger &OrvFrameworkLogger::shared()
{
    static OrvFrameworkLogger logger;
    return logger;
}

void OrvFrameworkLogger::release()
{
    OrvFrameworkLogger &logger = shared();
    const std::lock_guard lock(logger.mutex_);
    logger.loggers_.clear();
    logger.standardOutput_ = true;
    logger.delegate_ = nullptr;
}

void OrvFrameworkLogger::setLevel(const std::string &className, std::uint32_t level)
{
    const std::lock_guard lock(mutex_);
    loggers_[className] = level;
}

std::uint32_t OrvFrameworkLogger::getLevel(const std::string &className) const
{
    const std::lock_guard lock(mutex_);
    const auto found = loggers_.find(className);
    return found == loggers_.end() ? 0 : found->second;
}

std::string OrvFrameworkLogger::levelString(std::uint32_t level)
{
    switch (level) {
    case 0:
    case 1:
        return "DEBUG";
    case 2:
        return "INFO";
    case 3:
        return "WARN";
    case 4:
        return "ERROR";
    case 5:
        return "FATAL";
    default:
        return "ALL";
    }
}

void OrvFrameworkLogger::setStandardOutput(bool standardOutput)
{
    const std::lock_guard lock(mutex_);
    standardOutput_ = standardOutput;
}

bool OrvFrameworkLogger::standardOutput() const
{
    const std::lock_guard lock(mutex_);
    return standardOutput_;
}

void OrvFrameworkLogger::setDelegate(OrvFrameworkLoggerDelegate *delegate)
{
    const std::lock_guard lock(mutex_);
    delegate_ = delegate;
}

void OrvFrameworkLogger::print(const std::string &className, std::uint32_t level,
                               const std::string &log)
{
    outputLog(className, level, fmt::format("-[{}][{}] {}", className, levelString(level), log));
}

void OrvFrameworkLogger::print(const std::string &className, std::uint32_t level,
                               const std::string &log, const std::string &func, std::int32_t line)
{
    outputLog(
        className, level,
        fmt::format("-[{}][{}] {}\n{} (Line {})", className, levelString(level), log, func, line));
}

void OrvFrameworkLogger::outputLog(const std::string &className, std::uint32_t level,
                                   const std::string &log)
{
    if (getLevel(className) > level) {
        return;
    }
    OrvFrameworkLoggerDelegate *delegate = nullptr;
    bool toSystem = false;
    {
        const std::lock_guard lock(mutex_);
        delegate = delegate_;
        toSystem = standardOutput_;
    }
    if (delegate != nullptr && delegate->respondsToOutputLog()) {
        delegate->logger(delegate, static_cast<std::int32_t>(level), log);
    } else if (toSystem && platform::Platform::isInstalled()) {
        platform::Platform::current().systemLog().write(log);
    }
}

void logLine(std::uint32_t level, const std::string &message)
{
    OrvFrameworkLogger::shared().print(OrvAnnotation::className, level, message);
}

} // namespace orv
