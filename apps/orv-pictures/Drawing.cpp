#include "orv-pictures/Drawing.h"

#include "orv-pictures/IconFile.h"
#include "orv-pictures/Renderer.h"

#include <atomic>
#include <exception>
#include <thread>

namespace orv::pictures {

namespace {

constexpr std::size_t kThreads = 2;

Drawn drawPng(Renderer &renderer, const Picture &picture)
{
    const QSize points(picture.width, picture.height);
    Drawn drawn;
    drawn.image = renderer.image(points);
    drawn.files.push_back({picture.name + ".png", pngOf(drawn.image)});
    drawn.files.push_back({picture.name + "@2x.png", pngOf(renderer.image(points * 2))});
    return drawn;
}

Drawn drawIcon(Renderer &renderer, const Picture &picture)
{
    Drawn drawn;
    std::vector<IconMember> members;
    for (const IconSize &size : iconSizes()) {
        const QImage image = renderer.image(QSize(size.side, size.side));
        members.push_back({size.type, pngOf(image)});
        if (drawn.image.isNull()) {
            drawn.image = image;
        }
    }
    drawn.files.push_back({picture.name + ".icns", iconFile(members)});
    return drawn;
}

Drawn draw(const Picture &picture, Container container, const TemplateText &templates)
{
    Renderer renderer(templates.filled(picture.templateName, picture.values),
                      templates.path(picture.templateName) + " for \"" + picture.name + "\"");
    return container == Container::icns ? drawIcon(renderer, picture) : drawPng(renderer, picture);
}

/// One picture and where it goes.
struct Job {
    const Picture *picture;
    Container container;
    Drawn *drawn;
    std::exception_ptr error;
};

void drawJobs(std::vector<Job> &jobs, std::atomic<std::size_t> &next, const TemplateText &templates)
{
    for (std::size_t i = next++; i < jobs.size(); i = next++) {
        try {
            *jobs[i].drawn = draw(*jobs[i].picture, jobs[i].container, templates);
        } catch (...) {
            jobs[i].error = std::current_exception();
            return;
        }
    }
}

} // namespace

std::vector<std::vector<Drawn>> drawAll(const std::vector<Family> &families,
                                        const TemplateText &templates)
{
    std::vector<std::vector<Drawn>> result;
    std::vector<Job> jobs;
    result.reserve(families.size());
    for (const Family &family : families) {
        auto &drawn = result.emplace_back(family.pictures.size());
        for (std::size_t i = 0; i < drawn.size(); ++i) {
            jobs.push_back({&family.pictures[i], family.container, &drawn[i], nullptr});
        }
    }
    std::atomic<std::size_t> next = 0;
    {
        std::vector<std::jthread> threads;
        while (threads.size() < kThreads) {
            threads.emplace_back([&] { drawJobs(jobs, next, templates); });
        }
    }
    for (const Job &job : jobs) {
        if (job.error) {
            std::rethrow_exception(job.error);
        }
    }
    return result;
}

} // namespace orv::pictures
