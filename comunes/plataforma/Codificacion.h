#pragma once

#include <QByteArray>
#include <QString>
#include <QStringConverter>
#include <optional>
#include <string>

namespace comunes {

/// Cómo están escritos los caracteres de un fichero de texto: en Windows-1252 o en Unicode.
struct Codificacion {
  std::optional<QStringConverter::Encoding> unicode;  ///< ninguno, Windows-1252
  bool marca = false;                                 ///< empieza por la marca de orden de bytes

  /// Como se le enseña al operador.
  QString Nombre() const;
};

struct TextoLeido {
  QString texto;  ///< sin la marca
  Codificacion codificacion;
};

/// Lee un fichero entero. Es Unicode lo que empieza por la marca de UTF-8, UTF-16 o UTF-32, y UTF-8 lo que no
/// puede ser otra cosa: alguna letra de varios bytes y ninguno fuera de sitio. Lo que no se pudiera volver a
/// escribir igual se lee en Windows-1252, que admite cualesquiera bytes.
TextoLeido LeerTexto(const QByteArray& bytes);

/// La codificación de la marca de UTF-16 o UTF-32 con que empieza un fichero que no lo es entero, porque está
/// cortado o estropeado; "" si no es así. Grabado en Windows-1252, cada final de línea lo estropearía más.
QString MarcaIncumplida(const QByteArray& bytes);

/// Los bytes de `texto`, con la marca si la lleva; Windows-1252 pone '?' por lo que no tiene.
std::string EscribirTexto(const QString& texto, const Codificacion& codificacion);

/// Posición (desde 0) del primer carácter de `texto` que se perdería al escribirlo así, o -1.
qsizetype PrimeroSinEscribir(const QString& texto, const Codificacion& codificacion);

}  // namespace comunes
