#pragma once

namespace comunes {

/// Twips de un píxel independiente del dispositivo.
inline constexpr int kTwipsPorPixel = 15;
constexpr int PixelesDeTwips(int twips) {
  return twips / kTwipsPorPixel;
}
constexpr int TwipsDePixeles(int pixeles) {
  return pixeles * kTwipsPorPixel;
}

/// Factores de escala de la presentación, horizontal y vertical, y su interruptor. Valen 1: de la escala se
/// encargan las disposiciones y los píxeles independientes del dispositivo. Con el factor a 0 o la escala
/// suspendida las medidas no cambian.
inline float EscalaHorizontal = 1.0F;
inline float EscalaVertical = 1.0F;
inline bool EscalaSuspendida = false;

/// Por lo que de verdad se multiplica una medida; nunca 0.
inline float FactorHorizontal() {
  return EscalaSuspendida || EscalaHorizontal == 0.0F ? 1.0F : EscalaHorizontal;
}
inline float FactorVertical() {
  return EscalaSuspendida || EscalaVertical == 0.0F ? 1.0F : EscalaVertical;
}

}  // namespace comunes
