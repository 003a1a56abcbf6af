#include "bench/suite.h"

#include <OpenColorIO/OpenColorIO.h>

#include <QFile>

#include <algorithm>
#include <array>
#include <string_view>

namespace ocio = OCIO_NAMESPACE;

namespace bench {

namespace {

constexpr std::array<std::string_view, 7> sharedFormats = {"cube", "spi3d", "spi1d", "csp",
                                                           "cub",  "itx",   "3dl"};

bool isShared(const Format& format) {
    return std::find(sharedFormats.begin(), sharedFormats.end(), format.name()) !=
           sharedFormats.end();
}

ocio::ConstConfigRcPtr configWithoutCache() {
    const ocio::ConfigRcPtr config = ocio::Config::CreateRaw()->createEditableCopy();
    config->setProcessorCacheFlags(ocio::PROCESSOR_CACHE_OFF);
    return config;
}

ocio::FileTransformRcPtr transformOf(const QString& path) {
    ocio::FileTransformRcPtr transform = ocio::FileTransform::Create();
    transform->setSrc(QFile::encodeName(path).constData());
    transform->setInterpolation(ocio::INTERP_TETRAHEDRAL);
    return transform;
}

/// Ends with the table in memory as in the file: nothing optimised, nothing evaluated.
void load(benchmark::State& state, const Tables& tables, const Format& format, int size) {
    const ocio::ConstConfigRcPtr config = configWithoutCache();
    const ocio::FileTransformRcPtr transform = transformOf(tables.path(format, size));
    for (auto _ : state) {
        ocio::ConstProcessorRcPtr processor = config->getProcessor(transform);
        untimed(state, [&] {
            processor.reset();
            ocio::ClearAllCaches();
        });
    }
    count(state, format.points(size));
}

/// The colours of an identity lattice, three floats each.
std::vector<float> latticeColours(int size) {
    std::vector<float> colours;
    const auto last = static_cast<float>(size - 1);
    for (int b = 0; b < size; ++b) {
        for (int g = 0; g < size; ++g) {
            for (int r = 0; r < size; ++r) {
                colours.insert(colours.end(),
                               {static_cast<float>(r) / last, static_cast<float>(g) / last,
                                static_cast<float>(b) / last});
            }
        }
    }
    return colours;
}

/// Applies a table to the points of a lattice, as one image.
void resample(benchmark::State& state, const Tables& tables, int from, int to) {
    const auto processor =
        configWithoutCache()->getProcessor(transformOf(tables.path(formats().front(), from)));
    const auto cpu = processor->getDefaultCPUProcessor();
    std::vector<float> source = latticeColours(to);
    std::vector<float> target(source.size());
    const ocio::PackedImageDesc sourceImage(source.data(), to * to, to, 3);
    ocio::PackedImageDesc targetImage(target.data(), to * to, to, 3);
    for (auto _ : state) {
        cpu->apply(sourceImage, targetImage);
        benchmark::ClobberMemory();
    }
    count(state, cubed(to));
}

} // namespace

void registerPeer(const Tables& tables) {
    benchmark::AddCustomContext("OpenColorIO", ocio::GetVersion());
    for (const Format& format : formats()) {
        for (const int size : format.sizes) {
            if (isShared(format)) {
                add(format.named("peer/read", size), load, tables, format, size);
            }
        }
    }
    for (const auto& [from, to] : resamplings) {
        add(nameOf("peer/resample", from, to), resample, tables, from, to);
    }
}

} // namespace bench
