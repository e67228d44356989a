// The page's side of the worker in which all file work is done, so that the page never waits for it. Every call is
// answered in the order it was made; what the worker refuses rejects with its one-line reason.
export class Engine {
    constructor(workerText) {
        const url = URL.createObjectURL(new Blob([workerText], { type: "text/javascript" }));
        this.worker_ = new Worker(url);
        URL.revokeObjectURL(url);
        this.pending_ = new Map();
        this.next_ = 1;
        this.worker_.onmessage = ({ data }) => this.settle_(data);
        this.worker_.onerror = (event) => this.failAll_(event.message);
    }

    // Opens bytes as a document; resolves to its summary, whose `id` the other calls name.
    open(bytes) {
        return this.send_("open", [bytes]);
    }
    // A call of page/Bridge.h on a document.
    call(id, name, ...parameters) {
        return this.send_("call", [id, name, ...parameters]);
    }
    close(id) {
        return this.send_("close", [id]);
    }

    send_(what, parameters) {
        return new Promise((resolve, reject) => {
            const ticket = this.next_++;
            this.pending_.set(ticket, { resolve, reject });
            this.worker_.postMessage({ ticket, what, parameters });
        });
    }
    settle_({ ticket, result, error }) {
        const waiting = this.pending_.get(ticket);
        this.pending_.delete(ticket);
        if (error !== undefined) waiting.reject(new Error(error));
        else waiting.resolve(result);
    }
    failAll_(message) {
        for (const { reject } of this.pending_.values()) reject(new Error(message));
        this.pending_.clear();
    }
}
