// A library for a test to load first, under which /dev/clipwave-camera is a camera of 64 x 48 pixels: its raw
// pictures come 10 times a second, its compressed ones would 5 times. It is pulled out after two seconds.
#include <fcntl.h>
#include <linux/videodev2.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstring>
#include <ctime>
#include <deque>
#include <utility>
#include <vector>

namespace {

constexpr unsigned kWidth = 64, kHeight = 48, kSize = kWidth * kHeight * 2, kPage = 8192;
constexpr double kInterval = 0.1, kLife = 2;
std::atomic<int> camera{-1};
std::deque<unsigned> queued;
double startedAt = 0, nextAt = 0;
bool hasFailed = false;

double now() {
  timespec time{};
  ::clock_gettime(CLOCK_MONOTONIC, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

int fail(int code) {
  errno = code;
  return -1;
}

v4l2_pix_format pixels() {
  v4l2_pix_format format{};
  format.width = kWidth;
  format.height = kHeight;
  format.pixelformat = V4L2_PIX_FMT_YUYV;
  format.field = V4L2_FIELD_NONE;
  format.bytesperline = kWidth * 2;
  format.sizeimage = kSize;
  return format;
}

// Grey that grows lighter from picture to picture.
int takeOut(v4l2_buffer& buffer) {
  if (now() - startedAt > kLife) return fail(ENODEV);
  if (now() < nextAt || queued.empty()) return fail(EAGAIN);
  // Its signal is lost for a moment.
  if (now() - startedAt > kLife / 2 && !std::exchange(hasFailed, true)) return fail(EIO);
  buffer.index = queued.front();
  queued.pop_front();
  buffer.bytesused = buffer.length = kSize;
  buffer.flags = V4L2_BUF_FLAG_TIMESTAMP_MONOTONIC;
  buffer.timestamp.tv_sec = static_cast<time_t>(nextAt);
  buffer.timestamp.tv_usec =
      static_cast<suseconds_t>((nextAt - static_cast<double>(buffer.timestamp.tv_sec)) * 1e6);
  std::vector<unsigned char> picture(kSize, 128);
  for (unsigned i = 0; i < kSize; i += 2)
    picture[i] = static_cast<unsigned char>(40 + (nextAt - startedAt) * 80);
  nextAt += kInterval;
  return ::pwrite(camera, picture.data(), kSize, static_cast<off_t>(buffer.index) * kPage) == kSize
             ? 0
             : fail(EIO);
}

int answer(unsigned long request, void* argument) {
  switch (request) {
    case VIDIOC_QUERYCAP: {
      auto& capability = *static_cast<v4l2_capability*>(argument);
      std::memcpy(capability.card, "Paper Camera", 13);
      capability.capabilities = V4L2_CAP_VIDEO_CAPTURE | V4L2_CAP_STREAMING;
      return 0;
    }
    case VIDIOC_ENUM_FMT: {
      auto& format = *static_cast<v4l2_fmtdesc*>(argument);
      if (format.index > 1) return fail(EINVAL);
      format.pixelformat = format.index == 0 ? V4L2_PIX_FMT_MJPEG : V4L2_PIX_FMT_YUYV;
      return 0;
    }
    case VIDIOC_ENUM_FRAMEINTERVALS: {
      auto& interval = *static_cast<v4l2_frmivalenum*>(argument);
      if (interval.index > 0) return fail(EINVAL);
      interval.type = V4L2_FRMIVAL_TYPE_DISCRETE;
      interval.discrete = {1, interval.pixel_format == V4L2_PIX_FMT_YUYV ? 10U : 5U};
      return 0;
    }
    case VIDIOC_S_FMT:
      if (static_cast<v4l2_format*>(argument)->fmt.pix.pixelformat != V4L2_PIX_FMT_YUYV) return fail(EINVAL);
      [[fallthrough]];
    case VIDIOC_G_FMT:
      static_cast<v4l2_format*>(argument)->fmt.pix = pixels();
      return 0;
    case VIDIOC_G_PARM:
    case VIDIOC_S_PARM:
      static_cast<v4l2_streamparm*>(argument)->parm.capture.capability = V4L2_CAP_TIMEPERFRAME;
      static_cast<v4l2_streamparm*>(argument)->parm.capture.timeperframe = {1, 10};
      return 0;
    case VIDIOC_REQBUFS:
      static_cast<v4l2_requestbuffers*>(argument)->count = 4;
      return 0;
    case VIDIOC_QUERYBUF:
      static_cast<v4l2_buffer*>(argument)->length = kSize;
      static_cast<v4l2_buffer*>(argument)->m.offset = static_cast<v4l2_buffer*>(argument)->index * kPage;
      return 0;
    case VIDIOC_QBUF:
      queued.push_back(static_cast<v4l2_buffer*>(argument)->index);
      return 0;
    case VIDIOC_STREAMON:
      startedAt = nextAt = now();
      return 0;
    case VIDIOC_STREAMOFF:
    case VIDIOC_G_INPUT:
    case VIDIOC_ENUMINPUT:
    case VIDIOC_S_INPUT:
      return 0;
    case VIDIOC_DQBUF:
      return takeOut(*static_cast<v4l2_buffer*>(argument));
    default:
      return fail(ENOTTY);
  }
}

int openCamera() {
  camera = ::memfd_create("camera", MFD_CLOEXEC);
  return ::ftruncate(camera, 4 * kPage) == 0 ? camera.load() : -1;
}

}  // namespace

extern "C" int open(const char* path, int flags, ...) {
  va_list list;
  va_start(list, flags);
  const int mode = va_arg(list, int);
  va_end(list);
  if (std::strcmp(path, "/dev/clipwave-camera") == 0) return openCamera();
  return static_cast<int>(::syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}
extern "C" int open64(const char* path, int flags, ...) __attribute__((alias("open")));

extern "C" int ioctl(int descriptor, unsigned long request, ...) {
  va_list list;
  va_start(list, request);
  void* const argument = va_arg(list, void*);
  va_end(list);
  if (descriptor == camera && _IOC_TYPE(request) == 'V')
    return answer(static_cast<unsigned>(request), argument);
  return static_cast<int>(::syscall(SYS_ioctl, descriptor, request, argument));
}
