#pragma once

class QQmlApplicationEngine;

/// The engine that holds the whole interface; on the stack of the start function, null outside.
extern QQmlApplicationEngine* theAppEngine;
