// What the picture of a chart of many points costs: 100,000 categories in four series, thinned to
// what a window of 880 by 520 pixels can show.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <string>

#include "adapters/qt/chart_painter.h"

namespace vorek::qt {
namespace {

ChartModel LongChart() {
  constexpr int kPoints = 100'000;
  ChartModel chart;
  for (int i = 0; i < kPoints; ++i) chart.categories.push_back(std::to_string(i));
  for (int s = 0; s < 4; ++s) {
    ChartSeries series{"سري " + std::to_string(s), {}};
    for (int i = 0; i < kPoints; ++i) series.values.emplace_back((i * 7919 + s * 31) % 100003);
    chart.series.push_back(std::move(series));
  }
  return chart;
}

void BM_PaintChart(benchmark::State& state) {
  const ChartModel chart = LongChart();
  const auto kind = static_cast<ChartKind>(state.range(0));
  ChartPainter chart_painter(chart, {kind, 0, {}, &LightTheme(), QApplication::font()});
  QImage picture(880, 520, QImage::Format_ARGB32_Premultiplied);
  for (auto _ : state) {
    QPainter painter(&picture);
    chart_painter.Paint(painter, QRectF(0, 0, 880, 520));
  }
}

// Bars, stacked bars, lines.
BENCHMARK(BM_PaintChart)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vorek::qt

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
