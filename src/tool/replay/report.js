(() => {
    "use strict";

    const pictures = JSON.parse(document.getElementById("pictures").textContent);
    const only = document.getElementById("only-failures");
    const search = document.getElementById("search");
    const nothing = document.getElementById("nothing");
    const viewer = document.getElementById("viewer");
    const steps = [...document.querySelectorAll(".step")];
    const isFailure = step => step.matches(".failed, .broken");

    // Pictures are decoded when somebody looks at them: there may be hundreds.
    function show(frame) {
        const image = frame.querySelector("img");
        if (!image.getAttribute("src"))
            image.src = "data:image/png;base64," + pictures[frame.dataset.picture];
    }

    function showPicturesOf(details) {
        if (details.open)
            details.querySelectorAll(".frame[data-picture]").forEach(show);
    }

    function filter() {
        const text = search.value.trim().toLowerCase();
        for (const step of steps) {
            const fits = !text || step.textContent.toLowerCase().includes(text);
            step.hidden = !fits || (only.checked && !isFailure(step));
        }
        for (const script of document.querySelectorAll(".script")) {
            const isPlain = !text && !only.checked;
            const hasSteps = script.querySelector(".step:not([hidden])") !== null;
            script.hidden = !(isPlain || hasSteps || (only.checked && !text && script.matches(".failed")));
        }
        nothing.hidden = document.querySelector(".script:not([hidden])") !== null;
    }

    /// Goes to the next (1) or last (-1) step that can be seen and is wanted.
    function go(direction, wanted) {
        const seen = steps.filter(step => !step.hidden && wanted(step));
        if (seen.length === 0)
            return;
        const from = steps.indexOf(document.activeElement.closest(".step"));
        const behind = direction > 0 ? seen.find(step => steps.indexOf(step) > from)
            : seen.reverse().find(step => from < 0 || steps.indexOf(step) < from);
        const target = behind || seen[0];
        target.querySelector("summary").focus();
        target.scrollIntoView({ block: "center" });
    }

    function setAll(open) {
        steps.filter(step => !step.hidden).forEach(step => step.firstElementChild.open = open);
    }

    const keys = {
        j: () => go(1, () => true),
        k: () => go(-1, () => true),
        n: () => go(1, isFailure),
        p: () => go(-1, isFailure),
        f: () => { only.checked = !only.checked; filter(); },
        "/": () => search.focus(),
    };

    document.addEventListener("keydown", event => {
        if (event.ctrlKey || event.altKey || event.metaKey || viewer.open)
            return;
        if (event.target === search) {
            if (event.key === "Escape") {
                search.value = "";
                filter();
                search.blur();
            }
            return;
        }
        const action = keys[event.key];
        if (action) {
            event.preventDefault();
            action();
        }
    });

    document.addEventListener("toggle", event => showPicturesOf(event.target), true);

    document.addEventListener("click", event => {
        const picture = event.target.closest(".picture");
        if (!picture)
            return;
        const frame = picture.firstElementChild.cloneNode(true);
        document.getElementById("viewed").replaceChildren(frame);
        document.getElementById("viewer-title").textContent = picture.getAttribute("aria-label");
        viewer.showModal();
    });

    viewer.addEventListener("click", event => {
        if (event.target === viewer)
            viewer.close();
    });

    only.addEventListener("change", filter);
    search.addEventListener("input", filter);
    document.getElementById("open-all").addEventListener("click", () => setAll(true));
    document.getElementById("close-all").addEventListener("click", () => setAll(false));

    // A link to a step opens it.
    function openTarget() {
        const step = location.hash && document.getElementById(location.hash.slice(1));
        if (step && step.matches(".step"))
            step.firstElementChild.open = true;
    }
    window.addEventListener("hashchange", openTarget);
    openTarget();
    document.querySelectorAll("details[open]").forEach(showPicturesOf);
})();
