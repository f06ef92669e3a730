#ifndef VOREK_ADAPTERS_QT_SCALE_H_
#define VOREK_ADAPTERS_QT_SCALE_H_

#include <QFont>
#include <QRect>
#include <cstdint>

namespace vorek::qt {

// How twips become pixels. Forms are designed for a font of 8.25 points, so that with a larger
// font of the system everything grows alike.
class Scale {
 public:
  static constexpr double kDesignPoints = 8.25;

  // By the application's font and the primary screen.
  static Scale OfApplication();

  // Everything larger by the factor.
  Scale Zoomed(double factor) const { return Scale(pixels_per_twip_ * factor); }

  int Pixels(double twips) const { return qRound(twips * pixels_per_twip_); }
  double TwipsPerPixel() const { return 1 / pixels_per_twip_; }
  std::int32_t Twips(double pixels) const { return qRound(pixels / pixels_per_twip_); }
  // Neighbours in twips stay neighbours in pixels.
  QRect Pixels(std::int32_t left, std::int32_t top, std::int32_t width, std::int32_t height) const;

  // The application's font for a size that a control asks for, in design points; 0 or less for the
  // font's own.
  static QFont Font(double design_points);

 private:
  explicit Scale(double pixels_per_twip) : pixels_per_twip_(pixels_per_twip) {}

  double pixels_per_twip_;
};

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_SCALE_H_
