#include "graphviz/png_device.h"

#include <gvplugin_device.h>

#include <array>
#include <utility>

#include "graphviz/png_picture.h"

namespace quorbel {
namespace {

PictureTaker& pictureTaker() {
  static PictureTaker take;
  return take;
}

/// A device that has this opens no file.
void beginPicture(GVJ_t*) {}

void takePixels(GVJ_t* job) {
  const auto* pixels = reinterpret_cast<const unsigned char*>(job->imagedata);
  pictureTaker()(pngPicture(pixels, job->width, job->height));
}

void endPicture(GVJ_t*) {}

}  // namespace

void usePngDevice(GVC_t* context, PictureTaker take) {
  pictureTaker() = std::move(take);
  constexpr int kBestQuality = 1000;     // of several plug-ins Graphviz takes the best
  constexpr double kDotsPerInch = 96.0;  // as its own device for PNG has, with the same flags
  static gvdevice_engine_t engine = {beginPicture, takePixels, endPicture};
  static gvdevice_features_t features = {GVDEVICE_BINARY_FORMAT | GVDEVICE_DOES_TRUECOLOR,
                                         {0.0, 0.0},
                                         {0.0, 0.0},
                                         {kDotsPerInch, kDotsPerInch}};
  static std::array<gvplugin_installed_t, 2> devices = {
      {{0, "png:cairo", kBestQuality, &engine, &features}, {0, nullptr, 0, nullptr, nullptr}}};
  static std::array<gvplugin_api_t, 2> apis = {{{API_device, devices.data()}, {api_t{}, nullptr}}};
  static std::string name = "quorbel";
  static gvplugin_library_t library = {name.data(), apis.data()};
  gvAddLibrary(context, &library);
}

}  // namespace quorbel
