#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStringConverter>
#include <QTemporaryDir>

namespace pruebas {

struct Salida {
  int codigo;
  QString dicho, avisado;
};

/// Los bytes de `texto` en UTF-16 con su marca; `grande`, con el byte alto delante.
inline QByteArray Utf16(const QString& texto, bool grande) {
  QStringEncoder escritor(grande ? QStringConverter::Utf16BE : QStringConverter::Utf16LE,
                          QStringConverter::Flag::WriteBom);
  return escritor(texto);
}

/// Programas en una carpeta nueva, que desaparece con la prueba.
class EnCarpeta : public testing::Test {
 protected:
  Salida ejecutar(const QString& programa, const QStringList& argumentos) const {
    QProcess proceso;
    proceso.setWorkingDirectory(carpeta_.path());
    proceso.start(programa, argumentos);
    EXPECT_TRUE(proceso.waitForFinished(60000)) << argumentos.join(' ').toStdString();
    EXPECT_EQ(proceso.exitStatus(), QProcess::NormalExit) << argumentos.join(' ').toStdString();
    return {proceso.exitCode(), QString::fromUtf8(proceso.readAllStandardOutput()),
            QString::fromUtf8(proceso.readAllStandardError())};
  }
  QString ruta(const QString& nombre) const { return carpeta_.filePath(nombre); }
  QString escribir(const QString& nombre, const QByteArray& bytes) const {
    QFile f(ruta(nombre));
    EXPECT_TRUE(f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size());
    return ruta(nombre);
  }
  static QByteArray leer(const QString& ruta) {
    QFile f(ruta);
    EXPECT_TRUE(f.open(QIODevice::ReadOnly)) << ruta.toStdString();
    return f.readAll();
  }

  QTemporaryDir carpeta_;
};

}  // namespace pruebas
