#pragma once

#include <QString>
#include <array>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

namespace comunes {

/// Windows-1252 a Unicode. Los cinco bytes sin asignar (81, 8D, 8F, 90, 9D) pasan a U+0081… y vuelven
/// iguales.
QString DesdeWindows1252(std::string_view bytes);

/// Pasa bytes de Windows-1252 a UTF-8.
class EscritorUtf8 {
 public:
  /// `cambiar` dice qué se pone por cada carácter: él mismo, un escape…
  explicit EscritorUtf8(std::function<QString(const QString&)> cambiar);
  /// Pone `bytes` al final de `texto`.
  void anadir(std::string& texto, std::string_view bytes) const;
  /// Lo mismo, de un texto que no es de un registro.
  void anadirTexto(std::string& texto, const QString& otro) const { texto += cambiar_(otro).toStdString(); }

 private:
  std::function<QString(const QString&)> cambiar_;
  std::array<std::string, 256> escritos_;  // lo que se pone por cada byte
  std::array<bool, 256> iguales_{};        // los que se quedan como están
};

/// Unicode a Windows-1252, un byte por carácter; lo que la página no tiene pasa a '?'.
std::string AWindows1252(const QString& texto);

/// Posición (desde 0) del primer carácter de `texto` que Windows-1252 no tiene, o -1.
qsizetype PrimeroFueraDeWindows1252(const QString& texto);
/// true si todos los caracteres de `texto` existen en Windows-1252.
bool CabeEnWindows1252(const QString& texto);

/// Los caracteres que cambian el sentido en que se lee lo que los sigue: en un nombre de fichero lo harían
/// pasar por otro.
bool EsMarcaDeSentido(QChar c);
/// Con cada marca de sentido escrita, "\u202e", para que se vea.
QString ConMarcasEscritas(const QString& texto);
/// El texto con sus caracteres de control cambiados por U+FFFD y las marcas de sentido escritas, para
/// enseñarlo en una línea.
QString SinControles(QString texto);

/// Una cadena de JSON, con sus comillas. Los controles de U+007F a U+009F, que hay terminales que obedecen, y
/// las marcas de sentido van también escapados.
QString CadenaJson(const QString& texto);

/// Mayúsculas letra a letra, como las de los nombres de fichero: la "ß" no tiene y se queda.
QString Mayusculas(QString texto);

QString DesdeRuta(const std::filesystem::path& ruta);
std::filesystem::path ARuta(const QString& ruta);
/// ficheros::RutaAbsoluta, con los separadores del sistema.
QString RutaAbsoluta(const QString& ruta);

}  // namespace comunes
