// What scripts find in their global object. Runs once in each engine, as a
// function of the host (ScriptHost), of the enumerators and of the global object.
(function (host, enumerators, global) {
    "use strict";

    const remote = Symbol("remote object");
    const shape = Symbol("type of a value");
    const written = Symbol("value with members as the program writes it");
    const objects = new Map();
    const methods = new WeakMap();
    const limit = host.waitLimit;

    // Each program counts its objects from 1 on.
    let program = 0;

    const here = () => new Error().stack;

    /// Makes the error of a failed request. Its `failure` leads the host to
    /// what else is known about it.
    function errorOf(reply) {
        const error = new Error(reply.error);
        error.name = reply.name;
        error.failure = reply.failure;
        return error;
    }

    function resultOf(text) {
        const reply = JSON.parse(text);
        if ("error" in reply)
            throw errorOf(reply);
        return reply.result;
    }

    /// Sends a request. `kind` is empty for one that is no step of the script.
    function ask(kind, name, method, params) {
        return resultOf(host.perform(kind, name, method, JSON.stringify(params), here()));
    }

    // The engine's own set of globals is older than this name.
    Object.defineProperty(global, "globalThis", { value: global, writable: true, configurable: true });

    // Values

    const shapes = [
        ["QRectF", ["height", "width", "x", "y"]],
        ["QPointF", ["x", "y"]],
        ["QSizeF", ["height", "width"]],
    ];

    function encodeObject(value) {
        const keys = Object.keys(value);
        const sorted = keys.slice().sort().join();
        const known = shapes.find(([, names]) => names.join() === sorted);
        if (known && keys.every(key => typeof value[key] === "number"))
            return Object.assign({ type: value[shape] || known[0] }, value);
        const entries = {};
        for (const key of keys)
            entries[key] = encode(value[key]);
        return { type: "map", value: entries };
    }

    function encode(value) {
        if (value === undefined || value === null)
            return null;
        if (typeof value === "number" && !Number.isFinite(value))
            throw new TypeError(value + " can't be given to the program");
        if (typeof value === "function" || typeof value === "symbol")
            throw new TypeError("a " + typeof value + " can't be given to the program");
        if (typeof value !== "object")
            return value;
        if (value[remote])
            return { object: handleOf(value[remote]) };
        if (value[written])
            return value[written];
        if (Array.isArray(value))
            return value.map(encode);
        if (value instanceof Date)
            return { type: "QDateTime", text: value.toISOString() };
        return encodeObject(value);
    }

    function decodeTyped(value) {
        switch (value.type) {
        case "map": {
            const result = {};
            for (const key of Object.keys(value.value))
                result[key] = decode(value.value[key]);
            return result;
        }
        case "QDateTime":
            return new Date(value.text);
        case "QColor":
            return value.text.length === 9 && value.text.startsWith("#ff") ? "#" + value.text.slice(3) : value.text;
        }
        if ("text" in value)
            return value.text;
        const result = Object.assign({}, value);
        delete result.type;
        // Invisible, but it goes back to the program with the value.
        Object.defineProperty(result, shape, { value: value.type });
        return result;
    }

    function decode(value) {
        if (value === null || typeof value !== "object")
            return value;
        if (Array.isArray(value))
            return value.map(decode);
        return "object" in value ? objectOf(value) : decodeTyped(value);
    }

    // Objects of the program

    /// The name of an object. Naming takes the program time, so it is asked for
    /// when somebody is to read it.
    function textOf(reference) {
        let name = reference.name;
        if (name === undefined) {
            if (reference.program !== program)
                return reference.class + " of a program that has ended";
            try {
                name = ask("", "name", "describe", { object: reference.object }).name;
            } catch (error) {
                return reference.class + " that is gone";
            }
        }
        return name || reference.class + " without a name";
    }

    /// The handle by which the program knows an object.
    function handleOf(reference) {
        if (reference.program === program)
            return reference.object;
        const message = `${reference.name || reference.class} belongs to a program that has ended; look for it again`;
        throw errorOf({ name: "ObjectGone", error: message, failure: host.fail(0, message, 0) });
    }

    const isMethod = value => typeof value === "object" && value !== null && value.type === "method";

    function methodOf(reference, name) {
        const method = (...values) => {
            const params = { object: handleOf(reference), method: name, arguments: values.map(encode), named: false };
            return decode(ask("action", name, "invoke", params).result);
        };
        methods.set(method, () => `"${name}" is a method of ${textOf(reference)}: call it`);
        return method;
    }

    function propertiesOf(reference, path) {
        const params = { object: handleOf(reference), names: [path], named: false };
        return ask("", path, "properties", params).properties;
    }

    // What a condition has read of the program, for telling why it did not hold.
    let reads = null;

    function noteRead(reference, path, value) {
        if (!reads)
            return;
        const key = reference.object + "." + path;
        reads.delete(key);
        reads.set(key, { reference, path, value });
    }

    const mostReads = 3;

    /// The last things that were read, in words.
    function readsText(list) {
        const last = Array.from(list.values()).slice(-mostReads);
        return last.map(one => `${textOf(one.reference)}.${one.path} was ${shown(one.value)}`).join(", ");
    }

    function read(reference, path) {
        const found = propertiesOf(reference, path)[path];
        if (isMethod(found))
            return methodOf(reference, path);
        const value = found !== null && found.members ? valueWithMembers(reference, path, found) : decode(found);
        noteRead(reference, path, value);
        return value;
    }

    function write(reference, path, value) {
        const params = { object: handleOf(reference), property: path, value: encode(value) };
        ask("write", path, "setProperty", params);
        return true;
    }

    function hasProperty(reference, path) {
        try {
            propertiesOf(reference, path);
            return true;
        } catch (error) {
            if (error.name === "AgentError")
                return false;
            throw error;
        }
    }

    function refuseToDelete() {
        throw new TypeError("a property of the program can't be deleted");
    }

    /// A font, say: its text, whose members lead back to the object.
    function valueWithMembers(reference, path, value) {
        const own = { type: value.type, text: value.text };
        return new Proxy({}, {
            get(target, name) {
                if (name === written)
                    return own;
                if (name === "toString" || name === "toJSON" || name === "valueOf" || name === Symbol.toPrimitive)
                    return () => own.text;
                if (typeof name === "symbol" || name === "then")
                    return undefined;
                return read(reference, `${path}.${name}`);
            },
            set: (target, name, member) => write(reference, `${path}.${String(name)}`, member),
            has: (target, name) => typeof name !== "symbol" && hasProperty(reference, `${path}.${name}`),
            deleteProperty: refuseToDelete,
        });
    }

    const traps = {
        get(target, name) {
            const reference = target[remote];
            if (name === remote)
                return reference;
            if (name === "toString" || name === "toJSON" || name === Symbol.toPrimitive)
                return () => textOf(reference);
            // Promises ask every object whether it is one of them.
            if (typeof name === "symbol" || name === "then")
                return undefined;
            return read(reference, name);
        },
        set: (target, name, value) => write(target[remote], String(name), value),
        has(target, name) {
            return typeof name === "symbol" ? name === remote : hasProperty(target[remote], name);
        },
        deleteProperty: refuseToDelete,
        ownKeys() {
            return [remote];
        },
    };

    /// The one script object that stands for an object of the program.
    function objectOf(reference) {
        const known = objects.get(reference.object);
        if (known)
            return known;
        const object = new Proxy({ [remote]: Object.assign({ program }, reference) }, traps);
        objects.set(reference.object, object);
        return object;
    }

    function isRemote(value) {
        return typeof value === "object" && value !== null && Boolean(value[remote]);
    }

    /// Parameters that name an object: a script object, a name, or nothing.
    function target(value) {
        if (value === undefined || value === null)
            return {};
        if (isRemote(value))
            return { object: handleOf(value[remote]) };
        if (typeof value === "string")
            return { name: value };
        throw new TypeError("an object or the name of one is expected, not " + shown(value));
    }

    function nameOf(value) {
        if (typeof value === "string")
            return value;
        throw new TypeError("the name of an object is expected, not " + shown(value));
    }

    function milliseconds(value) {
        if (value === undefined)
            return limit;
        if (typeof value !== "number" || !(value >= 0))
            throw new TypeError("a time in milliseconds is expected, not " + shown(value));
        return Math.min(Math.round(value), 0x7fffffff);
    }

    global.findObject = name => objectOf(ask("", "findObject", "find", { name: nameOf(name), named: false }));

    global.objectExists = name => {
        try {
            global.findObject(name);
            return true;
        } catch (error) {
            if (error.name === "ObjectNotFound")
                return false;
            throw error;
        }
    };

    global.waitForObject = (name, time) => {
        const params = { name: nameOf(name), timeout: milliseconds(time), ready: true, named: false };
        return objectOf(ask("wait", "waitForObject", "find", params));
    };

    global.children = of => {
        const params = Object.assign(target(of), { named: false });
        return ask("", "children", "children", params).objects.map(objectOf);
    };

    // Waiting

    const passing = ["ObjectNotFound", "AmbiguousName", "ObjectNotReady", "ObjectGone"];
    const longestPause = 100;

    function neverTrue(time, last, value, seen) {
        const read = seen.size ? "; " + readsText(seen) : "";
        const reason = last ? "; the last time: " + last.message : `; the last time it was ${shown(value)}${read}`;
        const error = new Error(`the condition did not come true within ${time / 1000} s${reason}`);
        error.failure = last ? last.failure : 0;
        return error;
    }

    /// Calls the condition, and keeps in `seen` what it reads.
    function observed(condition, seen) {
        const outer = reads;
        reads = seen;
        try {
            return condition();
        } finally {
            reads = outer;
        }
    }

    function waitUntil(condition, time) {
        const deadline = host.now() + time;
        let last = null;
        for (let pause = 5; ; pause = Math.min(2 * pause, longestPause)) {
            const seen = new Map();
            let value;
            try {
                value = observed(condition, seen);
                if (methods.has(value))
                    throw new TypeError(methods.get(value)());
                if (value)
                    return value;
                last = null;
            } catch (error) {
                // What isn't there may be on its way.
                if (!passing.includes(error.name))
                    throw error;
                last = error;
            }
            const left = deadline - host.now();
            if (left <= 0)
                throw neverTrue(time, last, value, seen);
            host.pause(Math.min(pause, left));
        }
    }

    global.waitFor = (condition, time) => {
        if (typeof condition !== "function")
            throw new TypeError("waitFor expects a function that gives the condition: waitFor(() => …)");
        const step = host.begin("wait", "waitFor", here());
        try {
            const value = waitUntil(condition, milliseconds(time));
            host.end(step);
            return value;
        } catch (error) {
            error.failure = host.fail(step, error.message, error.failure || 0);
            throw error;
        }
    };

    global.snooze = seconds => {
        if (typeof seconds !== "number" || !(seconds >= 0))
            throw new TypeError("snooze expects a number of seconds, not " + shown(seconds));
        resultOf(host.snooze(seconds, here()));
    };

    // Checks

    /// A value as people read it.
    function shown(value, depth = 0) {
        if (typeof value === "string")
            return JSON.stringify(value);
        if (typeof value === "function")
            return methods.has(value) ? "a function: " + methods.get(value)() : "a function";
        if (typeof value !== "object" || value === null)
            return String(value);
        if (isRemote(value))
            return textOf(value[remote]);
        if (value[written])
            return JSON.stringify(value[written].text);
        if (value instanceof Date || value instanceof RegExp || value instanceof Error)
            return String(value);
        if (depth > 3)
            return "…";
        if (Array.isArray(value))
            return "[" + value.map(entry => shown(entry, depth + 1)).join(", ") + "]";
        const entries = Object.keys(value).map(key => `${key}: ${shown(value[key], depth + 1)}`);
        return entries.length ? "{ " + entries.join(", ") + " }" : "{}";
    }

    // Layouts compute; the last bits of a number are no difference.
    function sameNumber(one, other) {
        return one === other || (Number.isNaN(one) && Number.isNaN(other))
            || Math.abs(one - other) <= 1e-12 * Math.max(Math.abs(one), Math.abs(other));
    }

    // Values with members are compared by their texts.
    const plain = value => typeof value === "object" && value !== null && value[written] ? value[written].text : value;

    /// Adds what differs between two values to `list`, each with its place.
    function differences(actualValue, expectedValue, place, list) {
        const actual = plain(actualValue);
        const expected = plain(expectedValue);
        const areNumbers = typeof actual === "number" && typeof expected === "number";
        if (areNumbers ? sameNumber(actual, expected) : actual === expected)
            return list;
        const comparable = value => typeof value === "object" && value !== null && !isRemote(value);
        if (comparable(actual) && comparable(expected)) {
            if (actual instanceof Date && expected instanceof Date) {
                if (actual.getTime() === expected.getTime())
                    return list;
            } else if (Array.isArray(actual) === Array.isArray(expected) && !(actual instanceof Date)) {
                const inside = Array.isArray(actual) ? key => `${place}[${key}]`
                    : key => (place ? place + "." : "") + key;
                const keys = new Set([...Object.keys(expected), ...Object.keys(actual)]);
                for (const key of keys)
                    differences(actual[key], expected[key], inside(key), list);
                return list;
            }
        }
        list.push({ key: place || "value", expected: shown(expected), found: shown(actual) });
        return list;
    }

    function words(message) {
        return message === undefined ? "" : typeof message === "string" ? message : shown(message);
    }

    function check(passed, name, message, list) {
        host.check(passed, name, words(message), JSON.stringify(list || []), here());
        return passed;
    }

    const test = {};

    test.compare = (...values) => {
        if (values.length < 2)
            throw new TypeError("test.compare expects a value and what it should be");
        const [actual, expected, message] = values;
        const list = differences(actual, expected, "", []);
        return check(list.length === 0, "test.compare", message, list);
    };

    test.verify = (...values) => {
        if (values.length < 1)
            throw new TypeError("test.verify expects a condition");
        const [condition, message] = values;
        const reason = methods.has(condition) ? methods.get(condition)() : "";
        if (reason)
            return check(false, "test.verify", message === undefined ? reason : `${words(message)} (${reason})`);
        return check(Boolean(condition), "test.verify", message);
    };

    test.pass = message => check(true, "test.pass", message);
    test.fail = message => check(false, "test.fail", message);
    test.log = (...values) => host.log("test.log", values.map(words).join(" "), false, here());

    test.screenshot = (of, file) => {
        resultOf(host.screenshot(JSON.stringify(target(of)), words(file), here()));
    };

    test.compareImage = (of, file, options) => {
        if (typeof file !== "string" || !file)
            throw new TypeError("test.compareImage expects the name of the kept picture, not " + shown(file));
        const settings = Object.assign({ tolerance: 0, pixels: 0 }, options);
        const highest = { tolerance: 255, pixels: Number.MAX_SAFE_INTEGER };
        for (const key of Object.keys(settings)) {
            if (!(key in highest))
                throw new TypeError(`test.compareImage knows the options tolerance and pixels, not "${key}"`);
            if (!Number.isInteger(settings[key]) || settings[key] < 0 || settings[key] > highest[key]) {
                const range = key === "pixels" ? "from 0 on" : "from 0 to 255";
                throw new TypeError(`the option "${key}" of test.compareImage is a whole number ${range}, not `
                    + shown(settings[key]));
            }
        }
        const { tolerance, pixels } = settings;
        return resultOf(host.compareImage(JSON.stringify(target(of)), file, tolerance, pixels, here()));
    };

    global.test = Object.freeze(test);

    global.console = {};
    for (const name of ["log", "info", "debug", "warn", "error"]) {
        const isWarning = name === "warn" || name === "error";
        global.console[name] = (...values) =>
            host.log("console." + name, values.map(words).join(" "), isWarning, here());
    }

    // Programs

    const own = new Set(Object.getOwnPropertyNames(global));

    /// Makes a global function of everything that the agent offers.
    function defineFunctions(names) {
        for (const name of names) {
            if (own.has(name))
                continue;
            global[name] = (...values) => {
                const params = { function: name, arguments: values.map(encode), timeout: limit, named: false };
                return decode(ask("action", name, "call", params).result);
            };
        }
    }

    global.startApplication = (...words) => {
        if (!words.every(word => typeof word === "string"))
            throw new TypeError("startApplication expects a program and its arguments as texts");
        objects.clear();
        ++program;
        defineFunctions(resultOf(host.start(JSON.stringify(words), here())));
    };

    global.closeApplication = () => resultOf(host.close(here()));
    global.waitForExit = time => resultOf(host.waitForExit(milliseconds(time), here()));
    own.add("startApplication").add("closeApplication").add("waitForExit");

    /// A misspelt enumerator would be no value at all, and go unnoticed.
    const complete = (name, values) => new Proxy(Object.freeze(values), {
        get(target, key) {
            if (typeof key === "symbol" || key in target)
                return target[key];
            throw new TypeError(`scripts have no ${name}.${key}; there are ${Object.keys(target).join(", ")}`);
        },
    });

    for (const name of Object.keys(enumerators)) {
        global[name] = complete(name, enumerators[name]);
        own.add(name);
    }

    global.$vantleImport = (file, names, line) => {
        const module = host.importModule(file, line, here());
        if (typeof module === "string")
            throw new Error(module);
        for (const name of names) {
            if (!(name in module))
                throw new SyntaxError(`"${file}" exports no "${name}"`);
        }
        host.endImport();
        return module;
    };
    own.add("$vantleImport");

    return { defineFunctions };
})
