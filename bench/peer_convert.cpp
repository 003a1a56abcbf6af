#include <OpenColorIO/OpenColorIO.h>

#include <exception>
#include <fstream>
#include <iostream>

namespace ocio = OCIO_NAMESPACE;

namespace {

/// A configuration with two colour spaces, "in" and "out", which a file's table converts between.
ocio::ConstConfigRcPtr configOf(const char* path) {
    const ocio::FileTransformRcPtr transform = ocio::FileTransform::Create();
    transform->setSrc(path);
    const ocio::ColorSpaceRcPtr in = ocio::ColorSpace::Create();
    in->setName("in");
    const ocio::ColorSpaceRcPtr out = ocio::ColorSpace::Create();
    out->setName("out");
    out->setTransform(transform, ocio::COLORSPACE_DIR_FROM_REFERENCE);
    const ocio::ConfigRcPtr config = ocio::Config::Create();
    config->addColorSpace(in);
    config->addColorSpace(out);
    return config;
}

} // namespace

/// peer-convert IN OUT: reads a table and writes it as a cube file of 65 points per axis.
int main(int argc, char* argv[]) {
    if (argc != 3) {
        return 1;
    }
    try {
        const ocio::BakerRcPtr baker = ocio::Baker::Create();
        baker->setConfig(configOf(argv[1]));
        baker->setInputSpace("in");
        baker->setTargetSpace("out");
        baker->setFormat("iridas_cube");
        baker->setCubeSize(65);
        std::ofstream out(argv[2]);
        baker->bake(out);
        return out.flush().good() ? 0 : 1;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
