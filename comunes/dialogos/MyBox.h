#pragma once

#include <QString>
#include <QStringList>
#include <vector>

class QWidget;

namespace comunes {

/// Códigos de resultado, según el texto del botón que se pulsó.
enum ResultadoCaja { kAceptar = 1, kCancelar, kAbortar, kReintentar, kIgnorar, kSi, kNo };

/// Caja de mensajes del sistema. ";" en `Texto` es un cambio de línea. `Icono`: 1 aviso, 16 pregunta. `Botones`:
/// 1 Aceptar; 2 Aceptar, Cancelar; 3 Si, No; 4 Si, No, Cancelar; 5 Abortar, Reintentar, Ignorar; 6 Reintentar,
/// Cancelar. `Defecto`, desde 1. `Top` y `Left` en twips, -1 centra en la pantalla. `Sobre` centra sobre una
/// ventana o control. Sin `Modal` vuelve enseguida con 0. Devuelve ResultadoCaja.
int MyMsgBox(const QString& Texto, const QString& Titulo, int Icono, int Botones, int Defecto,
             float Top = -1, float Left = -1, QWidget* Sobre = nullptr, bool Modal = true);

/// Pide un valor (`Tipo` es un descriptor de campo), un intervalo (`Tipo` acaba en "(/)") o un elemento de una
/// lista ("TABLA"). `Tema` es la ruta de la ayuda o "". Devuelve "" si se sale sin "Aceptar".
QString MyInputBox(const QString& Texto, const QString& Titulo, int Icono, const QString& Tipo,
                   const QString& Defecto, float Top = -1, float Left = -1, QWidget* Sobre = nullptr,
                   const QString& Tema = {});

/// Elige una fila de una rejilla; `Datos[fila][columna]`. Devuelve el texto de la columna titulada `Columna`.
QString MyVisorBox(const QString& Titulo, const QString& Columnas, const std::vector<QStringList>& Datos,
                   int Icono, const QString& Columna, float Top = -1, float Left = -1,
                   QWidget* Sobre = nullptr);

}  // namespace comunes
