-- Sets all nine parameters of TvDelay on a track, saves the session, opens it again, and prints what
-- Ardour knows of them before and after.
local rate = tonumber(os.getenv("TVDELAY_RATE"))
local folder = os.getenv("TVDELAY_SESSION")
AudioEngine:set_backend("None (Dummy)", "", "")
AudioEngine:set_sample_rate(rate)
AudioEngine:start()

local function parameters(processor)
    local values = {}
    for i = 0, 8 do
        values[i + 1] = string.format("%.9g", (ARDOUR.LuaAPI.get_processor_param(processor, i)))
    end
    return table.concat(values, " ")
end

-- What they are once the effect has run for some blocks: it follows the sample rate in the first.
local function settled(processor)
    local values, unchanged = parameters(processor), 0
    while unchanged < 20 do
        ARDOUR.LuaAPI.usleep(50000)
        local now = parameters(processor)
        unchanged = now == values and unchanged + 1 or 0
        values = now
    end
    return values
end

local session = assert(create_session(folder, "session", rate))
assert(session:nominal_sample_rate() == rate, "the session has another rate")
local processor = ARDOUR.LuaAPI.new_plugin(session, "TvDelay", ARDOUR.PluginType.LXVST, "")
local track = session:new_audio_track(2, 2, nil, 1, "track", ARDOUR.PresentationInfo.max_order,
    ARDOUR.TrackMode.Normal, true):front()
assert(track:add_processor_by_index(processor, 0, nil, true) == 0, "the track refuses it")
settled(processor)
local i = 0
for value in os.getenv("TVDELAY_VALUES"):gmatch("%S+") do
    assert(ARDOUR.LuaAPI.set_processor_param(processor, i, tonumber(value)))
    i = i + 1
end
print("set " .. settled(processor))
assert(session:save_state("") == 0, "the session is not saved")
close_session()

session = assert(load_session(folder, "session"))
print("again " .. settled(session:route_by_name("track"):nth_plugin(0)))
close_session()
quit()
